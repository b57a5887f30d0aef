#include "zelwbr3/pages/monitor/PageInfoActivity.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/pages/monitor/TableRow.h"

#include <span>
#include <string>
#include <utility>
#include <vector>

namespace ZELWbr3 {

namespace {

using ZELLib3::Activity;
using Counter = double (Activity::*)(Long) const;

/// A label and the index of the counter beside it.
struct Figure {
  const char* sLabel = nullptr;
  int iIndex = 0;
};

/// A row shows two figures, or one on the left.
struct Row {
  Figure oLeft;
  Figure oRight = {};
};

// Labels of rows that belong to the row above start with four blanks.
constexpr Row Commands[] = {
    {{"SQL Commands", 0}, {"Creates", 1}},
    {{"Prepares", 2}, {"Alters", 3}},
    {{"Executes", 4}, {"Drops", 5}},
    {{"Rollbacks", 6}, {"DB Procedure Calls (External)", 8}},
    {{"Commits", 7}, {"DB Procedure Calls (Internal)", 9}},
    {{"Updates", 10}, {"Deletes", 13}},
    {{"    Rows Read", 11}, {"    Rows Read", 14}},
    {{"    Rows Changed", 12}, {"    Rows Deleted", 15}},
    {{"Selects and Fetches", 16}, {"Inserts", 19}},
    {{"    Rows Read", 17}, {"    Rows Added", 20}},
    {{"    Qualified Rows", 18}},
};

constexpr Row IO[] = {
    {{"Physical Reads", 0}, {"Logical Reads", 1}},
    {{"Physical Writes", 2}, {"Logical Writes", 3}},
};

constexpr Row Locks[] = {
    {{"Available Entries", 0}, {"Row Locks", 3}},
    {{"    Maximum Set", 1}, {"Table Locks", 4}},
    {{"    Average Set", 2}},
    {{"Lock Owner", 5}, {"Collisions", 7}},
    {{"Lock Requestor", 6}, {"Escalations", 8}},
};

constexpr Row OlderLocks[] = {
    {{"Maximum Entries Set", 1}, {"Average Entries Set", 2}},
    {{"Row Locks", 3}, {"Table Locks", 4}},
    {{"Collisions", 7}, {"Escalations", 8}},
};

constexpr Row Log[] = {
    {{"Log Pages Written", 0}, {"Group Commits", 1}},
    {{"Wait for Log Writer", 2}, {"Log I/O Queue Overflow", 3}},
};

constexpr Row ScansAndSorts[] = {
    {{"Table Scans", 21}, {"Cache Sorts", 22}},
    {{"Index Scans", 23}, {"Row Sorts", 24}},
};

struct Table {
  const char* sID;
  Counter pCounter;
  std::span<const Row> rows;
  bool bRates = true;  ///< the figures are counters, not levels
};

/// Also keeps what it reads in figures.
void FillTable(const Element& oTable, const Activity& oActivity, const Table& oContent, const UserLocale& oLocale,
               std::vector<Samples::Figure>& figures) {
  Element& oTemplate = TableRow(oTable, TemplateAlone);
  std::string sAbove[2];  // labels that indented ones belong to
  for (std::size_t iRow = 0; iRow < oContent.rows.size(); ++iRow) {
    const Row& oRow = oContent.rows[iRow];
    const auto Read = [&](const Figure& oFigure, int iCell) {
      if (oFigure.sLabel == nullptr) return std::string();
      const double dCount = (oActivity.*oContent.pCounter)(oFigure.iIndex);
      const std::string sLabel = Text::Trim(oFigure.sLabel);
      const bool bPart = oFigure.sLabel[0] == ' ';
      std::string& sWhole = sAbove[iCell / 2];
      if (!bPart) sWhole = sLabel;
      if (oContent.bRates) {
        figures.push_back(
            {.ID = std::string(oContent.sID) + "." + std::to_string(oFigure.iIndex),
             .Label = bPart ? sWhole + ": " + sLabel : sLabel,
             .Unit = "",
             .IsCounter = true,
             .Value = dCount < 0 ? Samples::NotKnown : dCount,
             .Place = std::string(oContent.sID) + " " + std::to_string(iRow) + " " + std::to_string(iCell) + " after"});
      }
      return modCells::FormatCounter(dCount, oLocale);
    };
    // Read everything before adding the row, so that no row is left half filled.
    const std::string sLeft = Read(oRow.oLeft, 1);
    const std::string sRight = Read(oRow.oRight, 3);
    const auto oCells = modCells::AddRowCells(oTemplate, 4);
    const auto Write = [&](std::size_t iCell, const Figure& oFigure, const std::string& sCounter) {
      if (oFigure.sLabel == nullptr) return;
      modCells::SetCellText(*oCells[iCell], oFigure.sLabel);
      modCells::SetCellText(*oCells[iCell + 1], sCounter);
    };
    Write(0, oRow.oLeft, sLeft);
    Write(2, oRow.oRight, sRight);
  }
}

}  // namespace

void PageInfoActivity::FillContent() {
  const auto oActivity = Given(Database()->Activity());
  if (!oActivity->Refresh()) return ReportLastError();
  FillLocale();
  const bool bOlder = Given(Database()->Version())->Number() < ZELLib3::Kernel::V73;
  const Table Tables[] = {
      {"tabCommands", &Activity::SQLCounter, Commands},
      {"tabIO", &Activity::IOCounter, IO},
      {"tabLock", &Activity::LockCounter, bOlder ? std::span<const Row>(OlderLocks) : std::span<const Row>(Locks),
       false},
      {"tabLog", &Activity::LogCounter, Log},
      {"tabScanSort", &Activity::SQLCounter, ScansAndSorts},
  };
  std::vector<Samples::Figure> figures;
  for (const Table& oTable : Tables) FillTable(RequiredElement(oTable.sID), *oActivity, oTable, Locale(), figures);
  Sample("Activity", std::move(figures));
}

}  // namespace ZELWbr3
