#include "zelwbr3/framework/Page.h"

#include "zelwbr3/dom/Document.h"
#include "zelwbr3/framework/PageSite.h"
#include "zelwbr3/platform/FCommandlist.h"
#include "zelwbr3/platform/Platform.h"

#include <stdexcept>
#include <utility>

namespace ZELWbr3 {

void PageSite::Adopt(Page& oPage) { oPage.SetBrowser(*this); }

Page::~Page() = default;

std::shared_ptr<ZELCmd3::FCommandlist> Page::Commandlist() const { return nullptr; }

void Page::Hide() { m_oDocument.reset(); }

void Page::CleanUp() {
  m_oDocument.reset();
  m_oBrowser = nullptr;
}

PageSite& Page::Browser() const {
  if (m_oBrowser == nullptr) throw std::logic_error("The page " + Name() + " does not belong to a control");
  return *m_oBrowser;
}

void Page::ShowInFrame() { Browser().Show(shared_from_this(), WebBrowser()); }

void Page::BeginReload() {
  // A second refresh before the first one's document has loaded is part of it:
  // the host gets one begin and one end.
  if (!std::exchange(m_bActionPending, true)) Browser().RaiseActionBegin();
}

void Page::DocumentComplete(const std::shared_ptr<ZELWbr3::Document>& oDocument) {
  m_oDocument = oDocument;
  try {
    Fill();
  } catch (const std::exception& oError) {
    // Go on: someone is waiting for the completion.
    if (HasBrowser()) m_oBrowser->Platform().TraceFailure("Filling the page " + Name() + " failed", oError);
  }
  if (HasBrowser()) m_oBrowser->NotifyPageComplete(shared_from_this());
  EndReload();
}

void Page::EndReload() {
  // The host may have cleaned the page up.
  if (std::exchange(m_bActionPending, false) && HasBrowser()) m_oBrowser->RaiseActionComplete(false);
}

}  // namespace ZELWbr3
