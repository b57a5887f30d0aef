#pragma once

#include "host/EventLog.h"
#include "host/HostPages.h"
#include "host/Step.h"
#include "zelwbr3/headless/HeadlessCommandlist.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/shell/Browser.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Host {

/// One run of zelreport: shows the main page, then the one asked for, takes
/// the steps and writes what stands in front at the end.
class Report {
 public:
  Report(std::shared_ptr<ZELLib3::Database> oDatabase, EventLog& oEvents);

  /// Writes the document to oOut: only the last one, or, when a step prints,
  /// each behind a line that says after which step it stood so.
  void Run(const std::string& sPage, const std::vector<Step>& steps, std::ostream& oOut);

  /// What the error displays said, and what was wrong with the answers.
  const std::vector<std::string>& Errors() const { return m_errors; }

 private:
  void Take(const Step& oStep);
  void RunCommand(Long lCommand);
  /// Lets everything that is under way arrive.
  void EndStep();
  /// A page whose file is missing has no error display of its own.
  void CheckPageFile();
  std::string VisibleDocument() const;

  Headless::HeadlessPlatform m_oPlatform;
  std::shared_ptr<Headless::HeadlessCommandlist> m_oCommandlist = std::make_shared<Headless::HeadlessCommandlist>();
  Browser m_oBrowser;
  HostPages m_oPages;
  EventLog& m_oEvents;
  std::vector<std::string> m_errors;
  std::vector<Connection> m_connections;
};

}  // namespace ZELWbr3::Host
