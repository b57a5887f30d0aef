#pragma once

#include "zelwbr3/ZELLib3/BlockSource.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/PageType.h"

#include <chrono>
#include <memory>
#include <optional>

namespace ZELWbr3 {

/// A page whose rows are read in blocks: shows the first block when it is filled,
/// and more with Read More and Read All, which are buttons of the page file and
/// items of the command list.
///
/// Read All adds block after block and lets the message loop run in between, so
/// the rows appear while it reads and the user can do anything; it never gets
/// further ahead of the screen than a few of the browser's batches. Escape, Stop,
/// leaving the page and a new document end the reading after the current block;
/// the rows read so far stay. A source without an end is read MostRows rows at a
/// time.
///
/// A click or key that starts Read All is a document event, and while one is
/// handled all others are dropped. Poll allows them, and the page itself refuses
/// to start a second reading.
class ZELWBR3_EXPORT BlockPage : public DataPage {
 public:
  static constexpr int CommandReadMore = 2;
  static constexpr int CommandReadAll = 3;
  static constexpr int CommandStop = 5;

  /// The maximum number of rows of one Read All. A row costs little more than its
  /// texts, here and in the browser.
  static constexpr int MostRows = 2'000'000;

  void Hide() override;
  void CleanUp() override;
  bool HandleOnKeyDown(Long& lKeyCode, Element* oElement) override;
  /// Rows read beyond the first block would be lost.
  bool CanRefreshUnasked() const override;

 protected:
  /// Called when the page is filled, before anything else.
  virtual void ObtainSource() {}
  /// The source to read; null while there is nothing to show.
  virtual std::shared_ptr<ZELLib3::BlockSource> Source() = 0;
  /// Releases the source.
  virtual void ReleaseSource() = 0;
  /// Writes what can be written without reading, such as the title.
  virtual void FillHead() {}
  /// Prepares the table, after the source was opened.
  virtual void BeginTable() = 0;
  /// Appends the rows of the source's block.
  virtual void AddBlock() = 0;

  /// Ends the reading and releases the source.
  void Forget();

  /// Leaves the page for the main frame; a page opened from the work frame, for
  /// that one if it still has a page.
  void Close() override;
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;
  void OnStopped(const std::exception_ptr& oFailure) override;

 private:
  /// One reading from start to end. The page forgets it when its document is
  /// released, and a forgotten reading does not touch anything any more.
  struct Reading {
    bool bAll;
    bool bStopped = false;
  };
  using Clock = std::chrono::steady_clock;

  void FillContent() final;
  void Read(bool bAll);
  /// Escape ends the reading.
  void Stop();
  /// Returns what the row count needs as a remark.
  std::string ReadAll(const Reading& oReading);
  /// Reads and shows one block; if that fails, reports it and returns false.
  bool ReadBlock(ZELLib3::BlockSource& oSource);
  void ShowBlock();
  /// Also says that Read All goes on.
  void ShowRowCount(Long lRows, const std::string& sRemark = {});
  /// The items of the command list: the reading commands, or Stop while Read All
  /// goes on, for which the page file has a button as well.
  void FillCommandlist();
  /// Enables the reading commands if there is something to read.
  void UpdateCommands();

  std::shared_ptr<Reading> m_oReading;
  /// When Escape last ended a reading.
  std::optional<Clock::time_point> m_oStopped;
  /// The source was opened and the table is ready for rows.
  bool m_bOpen = false;
  /// Rows have been read beyond the first block.
  bool m_bReadOn = false;
};

}  // namespace ZELWbr3
