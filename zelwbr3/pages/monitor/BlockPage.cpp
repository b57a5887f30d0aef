#include "zelwbr3/pages/monitor/BlockPage.h"

#include "zelwbr3/base/Finally.h"
#include "zelwbr3/framework/KeyCode.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/ReadingStopped.h"
#include "zelwbr3/framework/modElement.h"
#include "zelwbr3/framework/modFormat.h"
#include "zelwbr3/framework/modPicture.h"

#include <array>
#include <stdexcept>
#include <string>

namespace ZELWbr3 {

namespace {

struct ReadingCommand {
  int iCommand;
  const char* sButton;
  const char* sItem;
  int iPicture;
};
constexpr std::array<ReadingCommand, 2> ReadingCommands = {
    {{BlockPage::CommandReadMore, "btnReadMore", "Read &More", modPicture::ReadMore},
     {BlockPage::CommandReadAll, "btnReadAll", "Read &All", modPicture::ReadAll}}};

/// For this long after Escape has ended a reading, another Escape, probably also
/// meant for the reading, does not close the page.
constexpr std::chrono::seconds EscapeGrace{1};

constexpr const char* StopButton = "btnStop";
constexpr const char* EnabledClass = "zelBtnEmph";
constexpr const char* DisabledClass = "zelBtnEmphDsbl";

}  // namespace

void BlockPage::Hide() {
  Forget();
  DataPage::Hide();
}

void BlockPage::CleanUp() {
  Forget();
  DataPage::CleanUp();
}

bool BlockPage::CanRefreshUnasked() const { return !m_bReadOn && DataPage::CanRefreshUnasked(); }

void BlockPage::Forget() {
  m_oReading.reset();
  m_bOpen = false;
  ReleaseSource();
}

void BlockPage::FillContent() {
  m_oReading.reset();
  m_bOpen = m_bReadOn = false;
  FillLocale();
  FillCommandlist();
  ObtainSource();
  const auto oSource = Source();
  if (oSource == nullptr) throw std::logic_error("The page " + Name() + " has nothing to show");
  FillHead();
  ShowRowCount(0);
  Finally(
      [&] {
        if (!oSource->Open()) return ReportLastError();
        BeginTable();
        m_bOpen = true;
        if (!oSource->IsEmpty()) ShowBlock();
      },
      [&] {
        if (Source() == oSource) UpdateCommands();
      });
}

bool BlockPage::OnClick(const std::string& sID) {
  if (sID == "btnClose" || sID == StopButton) {
    CarryOut(sID == StopButton ? CommandStop : CommandClose);
    return true;
  }
  for (const ReadingCommand& oCommand : ReadingCommands) {
    if (sID != oCommand.sButton) continue;
    if (RequiredElement(sID).className() == EnabledClass) CarryOut(oCommand.iCommand);
    return true;
  }
  return false;
}

bool BlockPage::HandleOnKeyDown(Long& lKeyCode, Element* oElement) {
  if (lKeyCode == KeyCode::Escape && !IgnoresEvents()) {
    if (m_oReading != nullptr) {
      Stop();
      return true;
    }
    if (m_oStopped && Clock::now() - *m_oStopped < EscapeGrace) return true;
  }
  return DataPage::HandleOnKeyDown(lKeyCode, oElement);
}

void BlockPage::Close() {
  if (m_oReading != nullptr) m_oReading->bStopped = true;
  if (WebBrowser() == zelWebBrowserDetail) {
    CloseDetail();
  } else {
    DataPage::Close();
  }
}

void BlockPage::OnCommand(Long lCommand) {
  if (lCommand == CommandStop && m_oReading != nullptr) m_oReading->bStopped = true;
  if (lCommand != CommandReadMore && lCommand != CommandReadAll) return;
  if (m_oReading != nullptr || !m_bOpen) return;
  Act([&] { Read(lCommand == CommandReadAll); });
}

void BlockPage::Stop() {
  if (m_oReading != nullptr) m_oReading->bStopped = true;
  m_oStopped = Clock::now();
}

void BlockPage::OnStopped(const std::exception_ptr& oFailure) {
  Stop();
  if (oFailure == nullptr) return;  // there are rows to show, fewer than usual
  if (m_oReading != nullptr) throw ReadingStopped{};
  DataPage::OnStopped(oFailure);
}

void BlockPage::Read(bool bAll) {
  const auto oReading = m_oReading = std::make_shared<Reading>(Reading{bAll});
  m_bReadOn = true;
  if (bAll) FillCommandlist();
  UpdateCommands();
  std::string sRemark;
  Finally(
      [&] {
        if (bAll) {
          sRemark = ReadAll(*oReading);
        } else {
          ReadBlock(*Source());
        }
      },
      [&] {
        if (m_oReading != oReading) return;  // forgotten with its document
        m_oReading.reset();
        Source()->Pause();
        if (bAll) {
          ShowRowCount(Source()->RowCount(), sRemark);
          FillCommandlist();
        }
        UpdateCommands();
      });
}

std::string BlockPage::ReadAll(const Reading& oReading) {
  const auto oSource = Source();
  const bool bInFront = Browser().IsInFront(WebBrowser());
  const Long lLast = oSource->RowCount() + MostRows;
  // A forgotten reading belongs to rows that are no longer shown.
  const auto Ended = [&] { return m_oReading.get() != &oReading || oReading.bStopped; };

  while (oSource->HasMore()) {
    const Long lRows = oSource->RowCount();
    if (lRows >= lLast) return ", and more: Read All goes on";
    if (!ReadBlock(*oSource)) break;
    if (oSource->RowCount() == lRows) {
      throw std::runtime_error("The instance has more rows than the " + std::to_string(lRows) +
                               " shown, but delivers none");
    }
    Poll(Ended);
    if (Ended() || IgnoresEvents()) break;
    if (bInFront && !Browser().IsInFront(WebBrowser())) break;
  }
  return "";
}

bool BlockPage::ReadBlock(ZELLib3::BlockSource& oSource) {
  const bool bRead = oSource.ReadMore();
  if (bRead) {
    ShowBlock();
  } else {
    ReportLastError();
  }
  return bRead;
}

void BlockPage::ShowBlock() {
  Finally([this] { AddBlock(); }, [this] { ShowRowCount(Source()->RowCount()); });
}

void BlockPage::ShowRowCount(Long lRows, const std::string& sRemark) {
  if (m_oReading != nullptr && m_oReading->bAll) {
    return SetText("txtFormFooter", modFormat::Number(lRows, 0, Locale()) + " rows, reading");
  }
  SetText("txtFormFooter", "Rows: " + std::to_string(lRows) + sRemark);
}

void BlockPage::FillCommandlist() {
  const bool bReadingAll = m_oReading != nullptr && m_oReading->bAll;
  modElement::ShowElement(Document()->all().item(StopButton), bReadingAll);
  Document()->parentWindow().TakesEscape(bReadingAll);
  const auto oCommandlist = NewCommandlist();
  if (oCommandlist == nullptr) return;
  if (bReadingAll) {
    oCommandlist->Add(PageType(), {int{CommandStop}, "&Stop", modPicture::Stop});
    return;
  }
  for (const ReadingCommand& oCommand : ReadingCommands) {
    oCommandlist->Add(PageType(), {oCommand.iCommand, oCommand.sItem, oCommand.iPicture, false});
  }
}

void BlockPage::UpdateCommands() {
  const bool bEnabled = m_bOpen && m_oReading == nullptr && Source()->HasMore();
  for (const ReadingCommand& oCommand : ReadingCommands) {
    if (Element* oButton = Document()->all().item(oCommand.sButton)) {
      oButton->className(bEnabled ? EnabledClass : DisabledClass);
      if (bEnabled) {
        oButton->removeAttribute("disabled");
      } else {
        oButton->setAttribute("disabled", "");
      }
    }
    if (const auto oCommandlist = Commandlist()) oCommandlist->Enable(PageType(), oCommand.iCommand, bEnabled);
  }
}

}  // namespace ZELWbr3
