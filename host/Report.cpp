#include "host/Report.h"

#include "host/ProgramFiles.h"
#include "host/TableCSV.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/Samples.h"
#include "zelwbr3/headless/ReportWriter.h"

#include <algorithm>
#include <ostream>
#include <stdexcept>
#include <thread>

namespace ZELWbr3::Host {

Report::Report(std::shared_ptr<ZELLib3::Database> oDatabase, EventLog& oEvents)
    : m_oBrowser(m_oPlatform), m_oPages(m_oBrowser, std::move(oDatabase), m_oCommandlist), m_oEvents(oEvents) {
  m_oBrowser.HTMLPath(HTMLFolder());
  m_oEvents.Watch(m_oBrowser, m_oPlatform);
  m_connections.push_back(m_oPlatform.MessageBox().Shown.Connect([this](const Headless::ScriptedAnswers::Box& oBox) {
    if (oBox.Title == "Error") m_errors.push_back(oBox.Text);
  }));
  m_connections.push_back(
      m_oPlatform.MessageBox().Unsuitable.Connect([this](const std::string& sText) { m_errors.push_back(sText); }));
}

void Report::Run(const std::string& sPage, std::chrono::seconds oOver, const std::vector<Step>& steps,
                 const std::string& sTable, std::ostream& oOut) {
  const auto Write = [&](std::size_t iStep) { oOut << "<!-- step " << iStep << " -->\n" << Visible(sTable); };
  const bool bPrints = std::ranges::find(steps, Step::Kind::Print, &Step::What) != steps.end();

  m_oPages.Show("Main");
  EndStep();
  if (sPage != "Main") {
    m_oPages.Show(sPage);
    EndStep();
  }
  ReadOver(oOver);
  for (std::size_t i = 0; i < steps.size(); ++i) {
    if (steps[i].What == Step::Kind::Print) {
      Write(i + 1);
    } else {
      Take(steps[i]);
      EndStep();
    }
  }
  if (!bPrints) {
    oOut << Visible(sTable);
  } else if (steps.back().What != Step::Kind::Print) {
    Write(steps.size());
  }
  m_oBrowser.CleanUp();
}

void Report::ReadOver(std::chrono::seconds oTime) {
  constexpr std::chrono::milliseconds Between{Samples::Distance};
  const auto oEnd = std::chrono::steady_clock::now() + oTime;
  for (auto oNow = std::chrono::steady_clock::now(); oNow < oEnd; oNow = std::chrono::steady_clock::now()) {
    std::this_thread::sleep_until(std::min<std::chrono::steady_clock::time_point>(oNow + Between, oEnd));
    RunCommand(DataPage::CommandRefresh);
    EndStep();
  }
}

void Report::Take(const Step& oStep) {
  switch (oStep.What) {
    case Step::Kind::Click:
      m_oPlatform.FrontFrame().Click(oStep.Text);
      break;
    case Step::Kind::Key:
      m_oPlatform.FrontFrame().Key(oStep.Number);
      break;
    case Step::Kind::Focus:
      m_oPlatform.FrontFrame().Focus(oStep.Text);
      break;
    case Step::Kind::Item:
      m_oCommandlist->ClickItem(oStep.Number);
      break;
    case Step::Kind::Show:
      m_oPages.Show(oStep.Text);
      break;
    case Step::Kind::Answer:
      m_oPlatform.MessageBox().Add(oStep.Text);
      break;
    case Step::Kind::Command:
      RunCommand(oStep.Number);
      break;
    case Step::Kind::Print:
      break;
  }
}

void Report::RunCommand(Long lCommand) {
  const auto oPage = m_oBrowser.ActPageObj();
  const auto oDataPage = std::dynamic_pointer_cast<DataPage>(oPage);
  if (oDataPage == nullptr) throw std::runtime_error("The page " + oPage->Name() + " has no commands");
  oDataPage->Command(lCommand);
}

void Report::EndStep() {
  m_oPlatform.MessagePump().Poll();
  m_oEvents.EndStep(*m_oCommandlist);
  CheckPageFile();
}

void Report::CheckPageFile() {
  const auto& oFrame = m_oPlatform.FrontFrame();
  if (oFrame.Found()) return;
  const std::string sError = "The page file " + oFrame.URL() + " cannot be read";
  if (std::ranges::find(m_errors, sError) == m_errors.end()) m_errors.push_back(sError);
}

std::string Report::Visible(const std::string& sTable) const {
  if (!sTable.empty()) return TableCSV(*m_oBrowser.VisibleDocument(), sTable);
  return Headless::WriteReport(*m_oBrowser.VisibleDocument(), m_oPlatform.FrontFrame().Folder());
}

}  // namespace ZELWbr3::Host
