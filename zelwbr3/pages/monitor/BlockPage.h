#pragma once

#include "zelwbr3/ZELLib3/BlockSource.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/PageType.h"

#include <chrono>
#include <memory>
#include <optional>

namespace ZELWbr3 {

/// A page whose rows are read in blocks: shows the first block when it is
/// filled, and more at the user's wish by Read More and Read All, which are
/// buttons of the page file and items of the command list.
///
/// Read All adds block by block and lets the message loop run in between, so
/// the rows appear while it reads and the user can do anything in the meantime;
/// it never runs further ahead of the screen than the browser's few batches.
/// Escape, Stop, leaving the page and a new document end the reading after the
/// current block; the rows read so far stay. A source without an end is read for
/// MostRows rows at a time.
///
/// A click or key that starts Read All is a document event whose handling would
/// keep all others out until it has finished. Poll lets them in, and the page
/// itself refuses to begin a second reading.
class BlockPage : public DataPage {
 public:
  static constexpr int CommandReadMore = 2;
  static constexpr int CommandReadAll = 3;
  static constexpr int CommandStop = 5;

  /// Rows that one Read All reads at the most. A row costs about 1.4 KB here, and
  /// more in the browser.
  static constexpr int MostRows = 2'000'000;

  void Hide() override;
  void CleanUp() override;
  bool HandleOnKeyDown(Long& lKeyCode, Element* oElement) override;

 protected:
  /// Called when the page is filled, before anything else.
  virtual void ObtainSource() {}
  /// What is read; null while there is nothing to show.
  virtual std::shared_ptr<ZELLib3::BlockSource> Source() = 0;
  /// Lets go of it.
  virtual void ReleaseSource() = 0;
  /// Writes what can be written without reading, such as the title.
  virtual void FillHead() {}
  /// Prepares the table, after the source was opened.
  virtual void BeginTable() = 0;
  /// Appends the rows of the source's block.
  virtual void AddBlock() = 0;

  /// Ends what is being read and lets go of it.
  void Forget();

  /// For the main frame; a page that others open from the work frame, for that
  /// one as long as a page is there.
  void Close() override;
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;

 private:
  /// One reading from its beginning to its end. The page forgets it when its
  /// document goes, and a reading that is forgotten touches nothing any more.
  struct Reading {
    bool bAll;
    bool bStopped = false;
  };
  using Clock = std::chrono::steady_clock;

  void FillContent() final;
  void Read(bool bAll);
  void ReadAll(const Reading& oReading);
  /// Reads and shows one block; false when that failed, which is reported.
  bool ReadBlock(ZELLib3::BlockSource& oSource);
  void ShowBlock();
  void ShowRowCount(Long lRows, const std::string& sRemark = {});
  /// The items of the command list: those to read with, or Stop while it reads.
  void FillCommandlist();
  /// Enables the reading commands as far as there is something to read.
  void UpdateCommands();

  std::shared_ptr<Reading> m_oReading;
  /// When Escape ended a reading last.
  std::optional<Clock::time_point> m_oStopped;
  /// The source was opened and the table is ready for rows.
  bool m_bOpen = false;
};

}  // namespace ZELWbr3
