#include "zelwbr3/instances/sqlite/rows/KeysetReader.h"

#include "zelwbr3/instances/common/rows/CellTexts.h"
#include "zelwbr3/instances/sqlite/file/Connection.h"

#include <sqlite3.h>

namespace ZELWbr3::SQLite {

namespace {

/// "?1, ?2".
std::string Parameters(int iCount) {
  std::string sList;
  for (int i = 1; i <= iCount; ++i) sList += (i == 1 ? "?" : ", ?") + std::to_string(i);
  return sList;
}

void Bind(Statement& oStatement, const std::vector<StoredValue>& key) {
  for (std::size_t i = 0; i < key.size(); ++i) oStatement.BindValue(static_cast<int>(i) + 1, key[i]);
}

struct CloseBlob {
  void operator()(sqlite3_blob* pBlob) const { sqlite3_blob_close(pBlob); }
};

}  // namespace

KeysetReader::KeysetReader(Connection& oConnection, TableKey oKey)
    : m_oKey(std::move(oKey)), m_sAsked("reading " + m_oKey.From()), m_iKeys(static_cast<int>(m_oKey.Columns.size())) {
  m_oColumns = ColumnsOf(Select(oConnection, "*", 1), 0);
}

bool KeysetReader::Continue(Connection& oConnection, Instances::RowBlock& oBlock) {
  if (m_oCursor) return m_oCursor->Continue(oConnection, oBlock);
  if (oBlock.Rows().empty()) m_oRead = m_oDelivered;
  // One more than fits, to tell whether there are more.
  Statement oStatement = Select(oConnection, m_oKey.List() + ", *", Instances::RowBlock::MaxRows + 1);
  while (oStatement.Step()) {
    if (oBlock.IsFull()) return true;
    oBlock.Add(RowOf(oStatement, m_iKeys, m_sAsked));
    m_oRead = std::make_shared<const Key>(KeyOf(oStatement));
  }
  return false;
}

void KeysetReader::Deliver(const Instances::RowBlock& oBlock) {
  if (m_oCursor) return m_oCursor->Deliver(oBlock);
  m_oDelivered = m_oRead;
  m_lDelivered += static_cast<std::int64_t>(oBlock.Rows().size());
}

void KeysetReader::Pause() {
  if (m_oCursor) m_oCursor->Pause();
}

KeysetReader::Key KeysetReader::KeyOf(const Statement& oStatement) const {
  Key key;
  for (int i = 0; i < m_iKeys; ++i) key.push_back(oStatement.Value(i));
  return key;
}

Statement KeysetReader::Select(Connection& oConnection, const std::string& sWhat, std::size_t lLimit) const {
  const std::string sAfter =
      " WHERE (" + m_oKey.List() + ")" + (m_oKey.Descending ? " < (" : " > (") + Parameters(m_iKeys) + ")";
  Statement oStatement = oConnection.Prepare("SELECT " + sWhat + " FROM " + m_oKey.From() + (m_oRead ? sAfter : "") +
                                                 " ORDER BY " + m_oKey.Order() + " LIMIT " + std::to_string(lLimit),
                                             m_sAsked);
  if (m_oRead) Bind(oStatement, *m_oRead);
  return oStatement;
}

Instances::RowTexts KeysetReader::LongRow(Connection& oConnection, std::size_t lInBlock) {
  if (!m_oKey.IsRowid) {
    if (!m_oCursor) {
      // As they are stored, which is by the key; an ORDER BY would read them whole.
      m_oCursor = std::make_unique<CursorReader>(oConnection, "SELECT * FROM " + m_oKey.From() + " NOT INDEXED",
                                                 m_sAsked, m_lDelivered);
    }
    return m_oCursor->LongRow(oConnection, lInBlock);
  }
  Statement oKeyStatement = Select(oConnection, m_oKey.List(), 1);
  if (!oKeyStatement.Step()) RaiseError(SQLITE_TOOBIG, m_sAsked, "a value is too long");
  auto oKey = std::make_shared<const Key>(KeyOf(oKeyStatement));
  const std::string sAtKey =
      " FROM " + m_oKey.From() + " WHERE (" + m_oKey.List() + ") = (" + Parameters(m_iKeys) + ")";
  const auto AskFor = [&](const std::string& sExpression) {
    Statement oStatement = oConnection.Prepare("SELECT " + sExpression + sAtKey, m_sAsked);
    Bind(oStatement, *oKey);
    if (!oStatement.Step()) RaiseError(SQLITE_TOOBIG, m_sAsked, "a value is too long");
    return oStatement;
  };
  Instances::RowTexts oRow;
  for (const Instances::RowColumn& oColumn : m_oColumns) {
    const std::string sColumn = QuoteIdentifier(oColumn.Name);
    const bool bIsBlob = AskFor("typeof(" + sColumn + ")").Text(0) == "blob";  // which does not read the value
    const auto oPart = PartOf(oConnection, oColumn.Name, *oKey, bIsBlob);
    oRow.push_back(oPart ? *oPart : LongCell(sColumn, AskFor));
  }
  m_oRead = std::move(oKey);
  return oRow;
}

std::optional<std::string> KeysetReader::PartOf(Connection& oConnection, const std::string& sColumn, const Key& oKey,
                                                bool bIsBlob) const {
  sqlite3_blob* pBlob = nullptr;
  const int rc = sqlite3_blob_open(oConnection.Handle(), m_oKey.Schema.c_str(), m_oKey.Table.c_str(), sColumn.c_str(),
                                   sqlite3_value_int64(oKey.front().get()), 0, &pBlob);
  const std::unique_ptr<sqlite3_blob, CloseBlob> oBlob(pBlob);
  if (rc != SQLITE_OK) return std::nullopt;  // another type, or computed
  const auto lBytes = static_cast<std::size_t>(sqlite3_blob_bytes(pBlob));
  if (lBytes <= Instances::CellTexts::LongestText) return std::nullopt;
  std::string sBegin(bIsBlob ? Instances::CellTexts::BlobBytesShown : Instances::CellTexts::LongestText + 4, '\0');
  sBegin.resize(std::min(sBegin.size(), lBytes));
  if (sqlite3_blob_read(pBlob, sBegin.data(), static_cast<int>(sBegin.size()), 0) != SQLITE_OK) {
    RaiseLastError(oConnection.Handle(), m_sAsked);
  }
  if (bIsBlob) return Instances::CellTexts::OfBlob(sBegin, static_cast<std::int64_t>(lBytes));
  // A text of another encoding is told by its size only.
  if (oConnection.Text("PRAGMA encoding", m_sAsked) != "UTF-8") sBegin.clear();
  return Instances::CellTexts::OfText(std::move(sBegin), static_cast<std::int64_t>(lBytes));
}

}  // namespace ZELWbr3::SQLite
