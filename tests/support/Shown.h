#pragma once

#include "tests/support/Screen.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestLocale.h"
#include "zelwbr3/headless/HeadlessCommandlist.h"
#include "zelwbr3/headless/HeadlessPlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {

/// A control without a screen, with an English locale, an instance and a
/// command list. An error display that the test has not announced fails it.
class Shown : public testing::Test, public Screen {
 protected:
  Shown();
  void TearDown() override;

  /// Writes a page file and shows page files from that folder from now on.
  void PageFile(const std::string& sName, const std::string& sHTML);
  /// Announces the next error display.
  void ExpectError(const std::string& sText) { m_expected.push_back(sText); }

  void ShowMain();
  /// Lets everything that is under way arrive.
  void Settle() { Platform.MessagePump().Poll(); }
  void Click(const std::string& sID);
  bool Key(int iKeyCode);

  /// The command list in one line, such as "2 &Offline, 5 -, (6 Restart)";
  /// disabled items stand in brackets.
  std::string Commands() const;

  /// What the host heard of, in order: events, boxes but error displays,
  /// traces.
  std::vector<std::string> Log;
  TestLocale* Locale = nullptr;
  Headless::HeadlessPlatform Platform;
  std::shared_ptr<Headless::HeadlessCommandlist> Commandlist = std::make_shared<Headless::HeadlessCommandlist>();
  std::shared_ptr<TestDatabase> Instance = std::make_shared<TestDatabase>();
  std::unique_ptr<Browser> Control;
  std::vector<Connection> Connections;

 private:
  const Browser& Showing() const override { return *Control; }

  std::unique_ptr<TempFolder> m_oFolder;
  std::vector<std::string> m_expected;
  std::vector<std::string> m_errors;
};

}  // namespace ZELWbr3::Testing
