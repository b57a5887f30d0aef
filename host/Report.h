#pragma once

#include "host/EventLog.h"
#include "host/HostPages.h"
#include "host/Step.h"
#include "zelwbr3/headless/HeadlessCommandlist.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/shell/Browser.h"

#include <chrono>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Host {

/// One run of zelreport: shows the main page, then the requested page, takes the
/// steps and writes the document in front.
class Report {
 public:
  Report(std::shared_ptr<ZELLib3::Database> oDatabase, EventLog& oEvents);

  /// For a time, first reads the page again every few seconds: then it has curves.
  /// Writes the final document to oOut. If steps print, writes the document at
  /// each of them and at the end, each after a line that names the step. With the
  /// id of a table, its rows as CSV instead.
  void Run(const std::string& sPage, std::chrono::seconds oOver, const std::vector<Step>& steps,
           const std::string& sTable, std::ostream& oOut);

  /// The texts of the error displays, and of answers that did not fit.
  const std::vector<std::string>& Errors() const { return m_errors; }

 private:
  void ReadOver(std::chrono::seconds oTime);
  void Take(const Step& oStep);
  void RunCommand(Long lCommand);
  /// Delivers all pending notifications.
  void EndStep();
  /// Reports a missing page file, which has no error display of its own.
  void CheckPageFile();
  /// The document in front, or its table.
  std::string Visible(const std::string& sTable) const;

  Headless::HeadlessPlatform m_oPlatform;
  std::shared_ptr<Headless::HeadlessCommandlist> m_oCommandlist = std::make_shared<Headless::HeadlessCommandlist>();
  Browser m_oBrowser;
  HostPages m_oPages;
  EventLog& m_oEvents;
  std::vector<std::string> m_errors;
  std::vector<ScopedConnection> m_connections;
};

}  // namespace ZELWbr3::Host
