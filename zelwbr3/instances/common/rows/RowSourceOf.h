#pragma once

#include "zelwbr3/ZELLib3/RowSource.h"
#include "zelwbr3/instances/common/rows/RowReader.h"

#include <memory>
#include <stdexcept>
#include <utility>

namespace ZELWbr3::Instances {

/// What views and tables have in common: I is ZELLib3::SysInfo or
/// ZELLib3::SQLTable, whose rows come from the reader that Open makes. Instance has
/// Attempt, which calls an operation with the connection, and Refuse.
///
/// When ReadMore fails, HasMore stays true: the same rows can be read
/// again.
template <class I, class Instance, class Connection>
class RowSourceOf : public I {
 public:
  using Reader = RowReader<Connection>;

  explicit RowSourceOf(std::shared_ptr<Instance> oInstance) : m_oInstance(std::move(oInstance)) {}

  bool IsEmpty() const override { return m_lRowCount == 0; }
  ZELLib3::Long RowCount() const override { return m_lRowCount; }
  ZELLib3::Long ColumnCount() const override { return Columns().size(); }
  std::string ColumnName(ZELLib3::Long iColumn) const override { return Column(iColumn).Name; }
  std::string ColumnTitle(ZELLib3::Long iColumn) const override { return Column(iColumn).Title; }

  bool Open() override {
    m_oReader.reset();
    m_oBlock = {};
    m_iPassed = 0;
    m_lRowCount = 0;
    m_bMore = false;
    return m_oInstance->Attempt([this](Connection& oConnection) {
      std::unique_ptr<Reader> oReader = MakeReader(oConnection);
      Deliver(*oReader, oConnection);
      oReader->Pause();
      m_oReader = std::move(oReader);
    });
  }

  bool ReadMore() override {
    if (!m_bMore) return m_oInstance->Refuse("there are no more rows to read");
    return m_oInstance->Attempt([this](Connection& oConnection) { Deliver(*m_oReader, oConnection); });
  }
  void Pause() override {
    if (m_oReader) m_oReader->Pause();
  }

  bool NextRow() override {
    if (EndOfBlock()) return false;
    ++m_iPassed;
    return true;
  }
  std::string Value(ZELLib3::Long iColumn) const override {
    Column(iColumn);
    if (m_iPassed == 0) throw std::out_of_range("There is no current row");
    return m_oBlock.Rows()[m_iPassed - 1].at(static_cast<std::size_t>(std::int32_t{iColumn}));
  }
  bool EndOfBlock() const override { return m_iPassed == m_oBlock.Rows().size(); }
  bool HasMore() const override { return m_bMore; }

 protected:
  /// Called by Open. Raises ZELLib3::InstanceError.
  virtual std::unique_ptr<Reader> MakeReader(Connection& oConnection) = 0;

  Instance& Source() const { return *m_oInstance; }

 private:
  void Deliver(Reader& oReader, Connection& oConnection) {
    RowBlock oBlock;
    m_bMore = oReader.Read(oConnection, oBlock);
    m_oBlock = std::move(oBlock);
    m_iPassed = 0;
    m_lRowCount += m_oBlock.Rows().size();
  }

  const std::vector<RowColumn>& Columns() const {
    static const std::vector<RowColumn> oNone;
    return m_oReader ? m_oReader->Columns() : oNone;
  }
  const RowColumn& Column(std::int32_t iColumn) const {
    if (!std::in_range<std::size_t>(iColumn) || Columns().size() <= static_cast<std::size_t>(iColumn)) {
      throw std::out_of_range("There is no column " + std::to_string(iColumn));
    }
    return Columns()[static_cast<std::size_t>(iColumn)];
  }

  std::shared_ptr<Instance> m_oInstance;
  std::unique_ptr<Reader> m_oReader;  ///< null unless open
  RowBlock m_oBlock;
  std::size_t m_iPassed = 0;  ///< rows of the block that were stepped to
  ZELLib3::Long m_lRowCount;
  bool m_bMore = false;
};

}  // namespace ZELWbr3::Instances
