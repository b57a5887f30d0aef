#pragma once

#include "zelwbr3/dom/Document.h"
#include "zelwbr3/platform/WebBrowser.h"
#include "zelwbr3/remote/ChangeSender.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace ZELWbr3::Remote {

/// What a RemoteDocument needs of the browser that shows it.
class Channel {
 public:
  virtual ~Channel() = default;

  /// Sends a batch of changes for the document with this number, without waiting.
  /// RemoteDocument::Acknowledge answers it.
  virtual void SendBatch(std::uint32_t iSerial, std::uint32_t iBatch, const std::string& sList) = 0;
  /// The page gives something away, in pieces, for the clipboard, a file or a printer
  /// (html/export.js). A channel that cannot do that leaves it.
  virtual void Export(std::string_view) {}
  /// Runs something soon, but not within the present call. What it throws goes
  /// where that of arriving messages goes.
  virtual void Later(std::function<void()> oTask) = 0;
  /// A document was loaded (not one that begins again); nobody knows it yet.
  virtual void Loaded(const Document&) {}
  /// The document that BeginKnown expected is not the one that has come.
  virtual void Unexpected() {}
  /// The document that the control works on from now on is about to be told.
  virtual void Ready() {}
};

/// The protocol between the control and the agent in a frame's page.
///
/// The document that is worked on is a replica in this process. The agent sends a
/// snapshot when a document has loaded; writes to the replica go to the page
/// through a ChangeSender; clicks and focus come back by element number. Every
/// load has a number, and what a document says or is sent carries it, so that
/// nothing can reach another document than the one it is about.
///
/// A page that is shown again need not be loaded again: the agent puts the
/// document back to what it was at the load, under a number of its own, and
/// everything is reported as at a load. A page that is refreshed is filled beside
/// the document shown; when it is filled, the agent changes the one shown where the
/// two differ, and nothing else.
class RemoteDocument {
 public:
  /// Both outlive this object, which is destroyed before Later's tasks run.
  RemoteDocument(WebBrowserEvents& oEvents, Channel& oChannel) : m_oEvents(oEvents), m_oChannel(oChannel) {}
  ~RemoteDocument();
  RemoteDocument(const RemoteDocument&) = delete;
  RemoteDocument& operator=(const RemoteDocument&) = delete;

  // What begins a document under a number. The present one takes no more changes.

  void BeginLoad(std::uint32_t iSerial) { Begin(iSerial, How::Load); }
  /// A load has begun whose document will be what an earlier load of the page was:
  /// it is worked on at once, without waiting for the browser.
  void BeginKnown(std::uint32_t iSerial, std::string sSnapshot);
  /// The present document is being put back to its beginning. bAtOnce: it is worked
  /// on without waiting for the browser.
  void BeginAgain(std::uint32_t iSerial, bool bAtOnce = false) { Begin(iSerial, How::Again, bAtOnce); }
  /// The same, but the user sees the present document until the page is filled.
  void BeginRefresh(std::uint32_t iSerial, bool bAtOnce = false) { Begin(iSerial, How::Refresh, bAtOnce); }
  /// What was begun last is a load after all: the document could not be put back.
  void LoadInstead(std::uint32_t iSerial);
  /// The present document as it was at its load; what BeginKnown takes.
  const std::string& Snapshot() const { return m_sLoad; }
  std::uint32_t Serial() const { return m_iSerial; }

  /// A message of the agent; what is about another document is ignored. Throws
  /// std::invalid_argument if it is none.
  void Handle(std::string_view sMessage);
  /// The browser has carried out a batch of the document with this number.
  void Acknowledge(std::uint32_t iSerial, std::uint32_t iBatch);
  /// A key in the document. True if the browser must not act on it.
  bool KeyPress(Long lCode, bool bModified);
  /// The document is gone, with the browser.
  void Lose();

  std::shared_ptr<ZELWbr3::Document> Document() const { return m_oDocument; }
  /// There is a document, and no other one is on its way.
  bool IsLoaded() const { return m_oSender != nullptr; }
  void Flush();
  bool Settled() const { return m_oSender == nullptr || m_oSender->Settled(); }
  bool IsBehind() const { return m_oSender != nullptr && m_oSender->IsBehind(); }
  /// Sets the attribute of the root that the style sheet knows a theme by; an
  /// empty name removes it.
  void Theme(const std::string& sName);

 private:
  enum class How { Load, Again, Refresh };

  void Begin(std::uint32_t iSerial, How eHow, bool bKnown = false);
  /// Builds the replica from the snapshot and tells that it is there.
  void Build();
  /// Tells about a navigation that has begun, if that has not been done.
  void Announce();
  void Drop();
  /// Runs something soon, unless this object is gone by then or another document
  /// has begun.
  void Later(std::function<void()> oTask);

  WebBrowserEvents& m_oEvents;
  Channel& m_oChannel;
  std::shared_ptr<ZELWbr3::Document> m_oDocument;
  std::shared_ptr<ChangeSender> m_oSender;
  /// The message with the snapshot of the document as it was at its load.
  std::string m_sLoad;
  /// How the document, or the one on its way, came about.
  How m_eHow = How::Load;
  /// Its snapshot was known before it came.
  bool m_bKnown = false;
  std::uint32_t m_iSerial = 0;
  bool m_bAnnounced = true;
  /// A search field with a text in it has the keyboard; Escape empties it.
  bool m_bPageTakesEscape = false;
  bool m_bPageTakesEnter = false;
  std::shared_ptr<const bool> m_oAlive = std::make_shared<const bool>(true);
};

}  // namespace ZELWbr3::Remote
