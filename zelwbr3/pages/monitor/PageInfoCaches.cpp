#include "zelwbr3/pages/monitor/PageInfoCaches.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modElement.h"
#include "zelwbr3/pages/monitor/TableRow.h"

#include <array>

namespace ZELWbr3 {

namespace {

using ZELLib3::Caches;

const std::string Indent = "    ";

}  // namespace

void PageInfoCaches::FillContent() {
  const auto oCaches = Given(Database()->Caches());
  if (!oCaches->Refresh()) return ReportLastError();
  FillLocale();
  m_figures.clear();
  FillSizes(*oCaches);
  FillAccesses(*oCaches);
  FillParameters(*oCaches);
  FillUsage(*oCaches);
  Sample("Caches", std::move(m_figures));
}

void PageInfoCaches::FillSizes(const Caches& oCaches) {
  Element& oTemplate = Template("tabCacheSizes");
  const bool bAWE = oCaches.AWEEnabled();
  std::string sIndent;
  if (SharesIOBufferCache()) {
    const double dUnmapped = bAWE ? oCaches.AWEUnmappedSize() : 0;
    AddSize(oTemplate, "I/O Buffer Cache", oCaches.IOBufferCacheSize() + dUnmapped);
    sIndent = Indent;
  }
  AddSize(oTemplate, sIndent + "Data Cache", oCaches.DataCacheSize());
  if (SharesIOBufferCache()) {
    if (bAWE) {
      AddSize(oTemplate, sIndent + "AWE mapped", oCaches.AWEMappedSize());
      AddSize(oTemplate, sIndent + "AWE unmapped", oCaches.AWEUnmappedSize());
    }
    AddSize(oTemplate, sIndent + "Converter", oCaches.ConverterSize());
    const double dData = bAWE ? oCaches.AWEMappedSize() : oCaches.DataCacheSize();
    AddSize(oTemplate, sIndent + "Misc.", oCaches.IOBufferCacheSize() - dData - oCaches.ConverterSize());
  } else {
    AddSize(oTemplate, sIndent + "Converter Cache", oCaches.ConverterSize());
  }
  AddSize(oTemplate, sIndent + "Catalog Cache", oCaches.CatalogCacheSize());
  if (const double dSize = oCaches.RollbackCacheSize(); dSize >= 0) {
    AddSize(oTemplate, sIndent + "Rollback Cache", dSize);
  }
  if (const double dSize = oCaches.SequenceCacheSize(); dSize >= 0) {
    AddSize(oTemplate, sIndent + "Sequence Cache", dSize);
  }
}

void PageInfoCaches::FillAccesses(const Caches& oCaches) {
  struct Part {
    const char* sLabel;
    Counter pCounter;
    /// Only instances without the shared I/O buffer cache have it.
    bool bOlder = false;
  };
  static constexpr Part Parts[] = {
      {"SQL Data", &Caches::SQLDataAccesses},
      {"OMS Data", &Caches::OMSDataAccesses},
      {"History/Undo", &Caches::HistoryUndoAccesses},
      {"OMS History", &Caches::OMSHistoryAccesses},
      {"Rollback Cache", &Caches::RollbackCacheAccesses, true},
      {"Converter Cache", &Caches::ConverterCacheAccesses, true},
      {"Catalog Cache", &Caches::CatalogCacheAccesses},
      {"Sequence Cache", &Caches::SequenceCacheAccesses},
  };
  Element& oTemplate = Template("tabCacheAccesses");
  AddAccesses(oTemplate, HasObjectStore() ? "Entire Data Cache" : "Data Cache", oCaches, &Caches::DataCacheAccesses);
  // The parts are also indented below a plain "Data Cache".
  for (const Part& oPart : Parts) {
    if (oPart.bOlder && SharesIOBufferCache()) continue;
    if ((oCaches.*oPart.pCounter)(0) >= 0) AddAccesses(oTemplate, Indent + oPart.sLabel, oCaches, oPart.pCounter);
  }
}

void PageInfoCaches::FillParameters(const Caches& oCaches) {
  Element& oTemplate = Template("tabCacheParams");
  if (SharesIOBufferCache()) {
    AddParameter(oTemplate, *Given(oCaches.IOBufferCacheParam()), oCaches.IOBufferCacheSize());
  } else {
    AddParameter(oTemplate, *Given(oCaches.DataCacheParam()), oCaches.DataCacheSize());
  }
  AddParameter(oTemplate, *Given(oCaches.RollbackCacheParam()), oCaches.RollbackCacheSize());
  AddParameter(oTemplate, *Given(oCaches.CatalogCacheParam()), oCaches.CatalogCacheSize());
  if (Database()->PlatformType() == ZELLib3::PlatformType::AddressWindowing) {
    AddParameter(oTemplate, *Given(oCaches.AWEParam()), oCaches.AWEEnabled() ? "YES" : "NO");
    AddParameter(oTemplate, *Given(oCaches.AWEMemoryParam()), oCaches.AWEMemorySize());
  }
}

void PageInfoCaches::FillUsage(const Caches& oCaches) {
  Element& oTable = RequiredElement("tabCacheUsage");
  if (!HasObjectStore()) return modElement::ShowElement(&oTable, false);

  Element& oTemplate = TableRow(oTable, TemplateAlone);
  const auto AddUsage = [&](const std::string& sLabel, double dSize) {
    const auto oCells = modCells::AddRowCells(oTemplate, 3);
    modCells::SetCellText(*oCells[0], sLabel);
    SetSize(*oCells[1], dSize, clsSize::KB);
    modCells::SetCellText(*oCells[2], FormatRate(oCaches.DataCacheSize(), dSize));
  };
  AddUsage("Entire Data Cache", oCaches.DataCacheUsedSize());
  const auto AddShare = [&](const char* sLabel, double dSize) {
    if (dSize >= 0) AddUsage(Indent + sLabel, dSize);
  };
  AddShare("SQL Data", oCaches.SQLDataSize());
  AddShare("OMS Data", oCaches.OMSDataSize());
  AddShare("History/Undo", oCaches.HistoryUndoSize());
  AddShare("OMS History", oCaches.OMSHistorySize());
}

Element& PageInfoCaches::Template(std::string_view sTable) const {
  return TableRow(RequiredElement(sTable), TemplateAlone);
}

void PageInfoCaches::AddSize(Element& oTemplate, const std::string& sLabel, double dSize) {
  const auto oCells = modCells::AddRowCells(oTemplate, 2);
  modCells::SetCellText(*oCells[0], sLabel);
  SetSize(*oCells[1], dSize, clsSize::KB);
}

void PageInfoCaches::AddAccesses(Element& oTemplate, const std::string& sLabel, const Caches& oCaches,
                                 Counter pCounter) {
  // Read everything before adding the row, so that no row is left half filled.
  const std::array<double, 3> counters = {(oCaches.*pCounter)(0), (oCaches.*pCounter)(1), (oCaches.*pCounter)(2)};
  m_figures.push_back({.ID = "Accesses." + Text::Trim(sLabel),
                       .Label = Text::Trim(sLabel),
                       .Unit = "",
                       .IsCounter = true,
                       .Value = counters[0] < 0 ? Samples::NotKnown : counters[0],
                       .Place = "tabCacheAccesses " + std::to_string(m_figures.size()) + " 1 last"});
  const auto oCells = modCells::AddRowCells(oTemplate, 5);
  modCells::SetCellText(*oCells[0], sLabel);
  for (std::size_t i = 0; i < counters.size(); ++i) {
    modCells::SetCellText(*oCells[i + 1], modCells::FormatCounter(counters[i], Locale()));
  }
  modCells::SetCellText(*oCells[4], FormatRate(counters[0], counters[1]));
}

void PageInfoCaches::AddParameter(Element& oTemplate, const ZELLib3::Parameter& oParameter, double dSize) {
  // Neither cache nor parameter: nothing to show.
  const bool bNone = dSize < 0 && Text::Trim(oParameter.Name()).empty();
  AddParameter(oTemplate, oParameter, bNone ? "" : SizeText(dSize, clsSize::KB));
}

void PageInfoCaches::AddParameter(Element& oTemplate, const ZELLib3::Parameter& oParameter, const std::string& sValue) {
  const std::string sName = oParameter.Name();
  const Long lGroup = oParameter.Group();
  const auto oCells = modCells::AddRowCells(oTemplate, 2);
  modCells::FillParamCell(*oCells[0], sName, lGroup);
  modCells::SetCellText(*oCells[1], sValue);
}

bool PageInfoCaches::OnClick(const std::string& sID) {
  if (!m_oParameterLink.IsClicked(sID)) return false;
  CarryOut(CommandOpenParameter);
  return true;
}

void PageInfoCaches::OnCommand(Long lCommand) {
  if (lCommand != CommandOpenParameter) return;
  Act([this] { m_oParameterLink.Open(Browser(), Database()); });
}

bool PageInfoCaches::SharesIOBufferCache() const {
  return Given(Database()->Version())->Number() >= ZELLib3::Kernel::V74;
}

std::string PageInfoCaches::FormatRate(double dWhole, double dPart) const {
  return modCells::FormatPercent(modCells::Percentage(static_cast<float>(dWhole), static_cast<float>(dPart)), Locale());
}

}  // namespace ZELWbr3
