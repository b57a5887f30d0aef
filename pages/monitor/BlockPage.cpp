#include "pages/monitor/BlockPage.h"

#include "framework/KeyCode.h"

#include <array>
#include <chrono>
#include <stdexcept>
#include <string>

namespace ZELWbr3 {

namespace {

struct ReadingCommand {
  int iCommand;
  const char* sButton;
  const char* sItem;
};
constexpr std::array<ReadingCommand, 2> ReadingCommands = {{{BlockPage::CommandReadMore, "btnReadMore", "Read &More"},
                                                            {BlockPage::CommandReadAll, "btnReadAll", "Read &All"}}};

constexpr const char* EnabledClass = "zelBtnEmph";
constexpr const char* DisabledClass = "zelBtnEmphDsbl";

/// Rows are sent to the screen no more often than it could show them: an
/// instance that answers at once has thousands of blocks a second.
constexpr std::chrono::milliseconds SendingInterval(20);

}  // namespace

void BlockPage::Hide() {
  Forget();
  DataPage::Hide();
}

void BlockPage::CleanUp() {
  Forget();
  DataPage::CleanUp();
}

void BlockPage::Forget() {
  m_oReading.reset();
  m_bOpen = false;
  ReleaseSource();
}

void BlockPage::FillContent() {
  m_oReading.reset();
  m_bOpen = false;
  FillLocale();
  FillCommandlist();
  ObtainSource();
  const auto oSource = Source();
  if (oSource == nullptr) throw std::logic_error("The page " + Name() + " has nothing to show");
  FillHead();
  ShowRowCount(0);
  if (oSource->Open()) {
    BeginTable();
    m_bOpen = true;
    if (!oSource->IsEmpty()) ShowBlock();
  } else {
    ReportLastError();
  }
  UpdateCommands();
}

bool BlockPage::OnClick(const std::string& sID) {
  if (sID == "btnClose") {
    Command(CommandClose);
    return true;
  }
  for (const ReadingCommand& oCommand : ReadingCommands) {
    if (sID != oCommand.sButton) continue;
    if (RequiredElement(sID).className() == EnabledClass) Command(oCommand.iCommand);
    return true;
  }
  return false;
}

bool BlockPage::HandleOnKeyDown(Long& lKeyCode, Element* oElement) {
  if (lKeyCode == KeyCode::Escape && m_oReading != nullptr && !IgnoresEvents()) {
    m_oReading->bStopped = true;
    return true;
  }
  return DataPage::HandleOnKeyDown(lKeyCode, oElement);
}

void BlockPage::Close() {
  if (m_oReading != nullptr) m_oReading->bStopped = true;
  if (WebBrowser() == PageSite::zelWebBrowserDetail) {
    CloseDetail();
  } else {
    DataPage::Close();
  }
}

void BlockPage::OnCommand(Long lCommand) {
  if (lCommand != CommandReadMore && lCommand != CommandReadAll) return;
  if (m_oReading != nullptr || !m_bOpen) return;
  Act([&] { Read(lCommand == CommandReadAll); });
}

void BlockPage::Read(bool bAll) {
  if (!m_bOpen) return;  // the host has taken the page away at the announcement
  const auto oSelf = shared_from_this();
  const auto oReading = m_oReading = std::make_shared<Reading>();
  UpdateCommands();
  try {
    Guarded([&] {
      if (bAll) {
        ReadAll(oReading);
      } else {
        ReadBlock(*Source());
      }
    });
  } catch (...) {
    if (m_oReading == oReading) m_oReading.reset();
    throw;
  }
  if (m_oReading != oReading) return;
  m_oReading.reset();
  UpdateCommands();
}

void BlockPage::ReadAll(const std::shared_ptr<Reading>& oReading) {
  const auto oSource = Source();
  const bool bInFront = Browser().IsInFront(WebBrowser());
  std::chrono::steady_clock::time_point oSent;

  while (m_oReading == oReading && oSource->HasMore()) {
    const Long lRows = oSource->RowCount();
    if (!ReadBlock(*oSource)) return;
    if (oSource->RowCount() == lRows) {
      throw std::runtime_error("The instance has more rows than the " + std::to_string(lRows) +
                               " shown, but delivers none");
    }
    if (const auto oNow = std::chrono::steady_clock::now(); oNow - oSent >= SendingInterval) {
      Browser().FlushDocuments();
      oSent = oNow;
    }
    Pump();
    if (m_oReading != oReading || oReading->bStopped || IgnoresEvents()) return;
    if (bInFront && !Browser().IsInFront(WebBrowser())) return;
  }
}

void BlockPage::Pump() {
  const bool bDropped = Browser().DropEvents(false);
  Browser().Platform().MessagePump().Drain();
  if (HasBrowser()) Browser().DropEvents(bDropped);
}

bool BlockPage::ReadBlock(ZELLib3::BlockSource& oSource) {
  if (!oSource.ReadMore()) {
    ReportLastError();
    return false;
  }
  return ShowBlock();
}

bool BlockPage::ShowBlock() {
  const bool bShown = Guarded([this] { AddBlock(); });
  if (m_bOpen) ShowRowCount(Source()->RowCount());
  return bShown;
}

void BlockPage::ShowRowCount(Long lRows) { SetText("txtFormFooter", "Rows: " + std::to_string(lRows)); }

void BlockPage::FillCommandlist() {
  const auto oCommandlist = Commandlist();
  if (oCommandlist == nullptr) return;
  oCommandlist->Reset(PageType());
  oCommandlist->Add(PageType(), {int{CommandClose}, "&Close", 0});
  for (const ReadingCommand& oCommand : ReadingCommands) {
    oCommandlist->Add(PageType(), {oCommand.iCommand, oCommand.sItem, 0, false});
  }
}

void BlockPage::UpdateCommands() {
  if (Document() == nullptr) return;  // gone while a failure was shown
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
