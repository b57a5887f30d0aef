#pragma once

#include "host/HostPages.h"
#include "tests/support/ChangedRecording.h"
#include "tests/support/Story.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestLocale.h"
#include "zelwbr3/headless/HeadlessCommandlist.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/shell/Browser.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {

/// A control without a screen that shows an instance, with English notation and
/// a command list. All that happens is told: what the host hears, what the user
/// is asked (with what was answered), what changes the instance. An error
/// display, a trace or a wrong answer that no test has read by the end fails it.
class Shown : public Story {
 public:
  explicit Shown(const std::string& sRecording, const Changes& changes = {});
  virtual ~Shown();
  Shown(const Shown&) = delete;
  Shown& operator=(const Shown&) = delete;

  // What a host and its user do. Afterwards everything that was under way has
  // arrived.

  /// Shows a page by its name.
  void Show(const std::string& sPage);
  /// Shows page files from a folder of the test's own from now on, and writes
  /// one of them: the body, or with a DOCTYPE all of it.
  void PageFile(const std::string& sName, const std::string& sHTML);
  void Answer(const std::string& sAnswer) { Platform.MessageBox().Add(sAnswer); }
  void Click(const std::string& sID);
  void Focus(const std::string& sID) { Platform.FrontFrame().Focus(sID); }
  /// True when the page took it.
  bool Key(int iCode);
  void Item(int iKey);
  /// Any of them as a step of a script: "show PAGE", "click ID", "focus ID",
  /// "key CODE", "item KEY", "answer WORD"; "with PATH = VALUE" changes the
  /// instance, "unit NUMBER" the unit of sizes.
  void Do(const std::string& sStep);
  void Settle() { Platform.MessagePump().Poll(); }

  /// Forgets what was told, which must have been without trouble.
  void Quiet();
  /// How often an operation was called so far, one that only reads included.
  int Uses(const std::string& sOperation) const;

  // What stands on the screen.

  /// The document, see Picture.h.
  std::string Picture() const;
  /// The items of the command list; one in brackets is disabled.
  std::string Items() const;
  /// Throws when the document in front has no such element.
  Element& At(const std::string& sID) const;
  std::string Text(const std::string& sID) const { return At(sID).innerText(); }
  bool IsShown(const std::string& sID) const;

  Headless::HeadlessPlatform Platform{std::make_unique<TestLocale>()};
  std::shared_ptr<Headless::HeadlessCommandlist> Commandlist = std::make_shared<Headless::HeadlessCommandlist>();
  std::shared_ptr<ChangedRecording> Database;
  std::unique_ptr<ZELWbr3::Browser> Browser;
  /// Called when an operation of a recording is called, before it is.
  std::function<void(const std::string& sCall)> OnCall;
  /// Called with a box or dialog on the screen, by its title or name.
  std::function<void(const std::string& sBox)> OnAsked;
  /// Handlers that must last as long as this.
  std::vector<Connection> Connections;

 private:
  void Tell(const Recorded::Call& oCall);

  std::vector<std::string> m_calls;
  TempFolder m_oFolder;
};

}  // namespace ZELWbr3::Testing
