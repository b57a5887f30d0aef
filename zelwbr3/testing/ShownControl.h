#pragma once

#include "zelwbr3/base/Event.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/headless/HeadlessCommandlist.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/shell/Browser.h"
#include "zelwbr3/testing/Story.h"
#include "zelwbr3/testing/TempFolder.h"
#include "zelwbr3/testing/TestLocale.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {

/// A control without a screen, with English notation and a command list, for tests
/// of pages with GoogleTest. All that happens is told, a line each: what the host
/// hears, and what the user is asked, with what was answered. An error display, a
/// trace or an answer that did not fit, which no test has read by the end, fails the
/// test.
///
///     ShownControl oControl({sMyPages, ZELWBR3_HTML});
///     oControl.Show(oPage);
///     oControl.Click("btnMore");
///     EXPECT_EQ(oControl.Picture(), "...");
class ZELWBR3_EXPORT ShownControl : public Story {
 public:
  /// Page files come from these folders, in this order.
  explicit ShownControl(const std::vector<std::string>& pageFolders);
  virtual ~ShownControl();
  ShownControl(const ShownControl&) = delete;
  ShownControl& operator=(const ShownControl&) = delete;

  // What a host and its user do. Afterwards everything that was under way has
  // arrived.

  /// Shows a page in its frame.
  void Show(const std::shared_ptr<Page>& oPage);
  /// Shows page files from a folder of the test's own from now on, and writes
  /// one of them: the body, or with a DOCTYPE all of it.
  void PageFile(const std::string& sName, const std::string& sHTML);
  /// An answer for the next box or dialog, as Headless::ScriptedAnswer has it.
  void Answer(const std::string& sAnswer) { Platform.MessageBox().Add(sAnswer); }
  void Click(const std::string& sID);
  void Focus(const std::string& sID) { Platform.FrontFrame().Focus(sID); }
  /// True when the page took it.
  bool Key(int iCode);
  /// A click on the command list's item with this key.
  void Item(int iKey);
  void Settle() { Platform.MessagePump().Poll(); }

  /// Forgets what was told, which must have been without trouble.
  void Quiet();

  // What stands on the screen.

  /// The document, see Picture.h.
  std::string Picture() const;
  /// The items of the command list; one in brackets is disabled.
  std::string Items() const;
  /// Throws when the document in front has no such element.
  Element& At(const std::string& sID) const;
  std::string Text(const std::string& sID) const;
  bool IsShown(const std::string& sID) const;

  Headless::HeadlessPlatform Platform{std::make_unique<TestLocale>()};
  std::shared_ptr<Headless::HeadlessCommandlist> Commandlist = std::make_shared<Headless::HeadlessCommandlist>();
  std::unique_ptr<ZELWbr3::Browser> Browser;
  /// Called with a box or dialog on the screen, by its title or name.
  std::function<void(const std::string& sBox)> OnAsked;

 private:
  std::vector<ScopedConnection> m_connections;
  TempFolder m_oFolder;
};

}  // namespace ZELWbr3::Testing
