#pragma once

#include "tests/support/ChangedRecording.h"
#include "zelwbr3/testing/ShownControl.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {

/// A control without a screen that shows a recording, and tells what changes the
/// instance as well.
class Shown : public ShownControl {
 public:
  explicit Shown(const std::string& sRecording, const Changes& changes = {});
  ~Shown() override;

  using ShownControl::Show;
  /// Shows a page by its name.
  void Show(const std::string& sPage);
  /// What a host and its user do as a step of a script: "show PAGE", "click ID",
  /// "focus ID", "key CODE", "item KEY", "answer WORD"; "with PATH = VALUE" changes
  /// the instance, "unit NUMBER" the unit of sizes.
  void Do(const std::string& sStep);
  /// How often an operation was called so far, one that only reads included.
  int Uses(const std::string& sOperation) const;

  std::shared_ptr<ChangedRecording> Database;
  /// Called when an operation of a recording is called, before it is.
  std::function<void(const std::string& sCall)> OnCall;

 private:
  void Tell(const Recorded::Call& oCall);

  std::vector<std::string> m_calls;
};

}  // namespace ZELWbr3::Testing
