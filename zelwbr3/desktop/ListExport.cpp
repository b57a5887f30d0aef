#include "zelwbr3/desktop/ListExport.h"

#include "zelwbr3/base/ReplaceFile.h"
#include "zelwbr3/desktop/DesktopPlatform.h"
#include "zelwbr3/platform/MessageBox.h"

#include <exception>
#include <utility>

#include <wx/base64.h>
#include <wx/buffer.h>
#include <wx/clipbrd.h>
#include <wx/filedlg.h>

namespace ZELWbr3::Desktop {

namespace {

void Copy(const std::string& sText) {
  const wxClipboardLocker oLocked;
  if (!oLocked) return;
  wxTheClipboard->SetData(new wxTextDataObject(wxString::FromUTF8(sText)));
}

void Save(DesktopPlatform& oPlatform, const std::string& sName, const std::string& sText) {
  wxFileDialog oDialog(wxGetTopLevelParent(oPlatform.Parent()), "Save what the page shows", "",
                       wxString::FromUTF8(sName), "*", wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  if (oDialog.ShowModal() != wxID_OK || oPlatform.Parent() == nullptr) return;
  const std::string sFile(oDialog.GetPath().utf8_str());
  try {
    ReplaceFile(sFile, sText);
  } catch (const std::exception& oError) {
    oPlatform.MessageBox().Show("The file \"" + sFile + "\" cannot be written: " + oError.what(), "Error",
                                MessageBox::Buttons::OK, MessageBox::Icon::Exclamation);
  }
}

}  // namespace

ListExport::Wish ListExport::Take(std::string_view sPiece) {
  constexpr char Separator = '\x7f';
  const auto iSeparator = sPiece.find(Separator);
  const std::string_view sKind = sPiece.substr(0, iSeparator);
  const std::string_view sRest = iSeparator == sPiece.npos ? "" : sPiece.substr(iSeparator + 1);
  if (sKind == "begin") {
    m_sName = sRest;
    m_sText.clear();
  } else if (sKind == "part") {
    m_sText += sRest;
  } else if (sKind == "base64") {
    const wxMemoryBuffer oBytes = wxBase64Decode(sRest.data(), sRest.size());
    m_sText.append(static_cast<const char*>(oBytes.GetData()), oBytes.GetDataLen());
  } else if (sKind == "copy") {
    Copy(std::exchange(m_sText, {}));
  } else if (sKind == "save" && m_oPlatform.Parent() != nullptr) {
    // Not within the page's message: the dialog lets in others.
    m_oPlatform.Parent()->CallAfter([oParent = wxWeakRef<wxWindow>(m_oPlatform.Parent()), &oPlatform = m_oPlatform,
                                     sName = m_sName, sText = std::exchange(m_sText, {})] {
      if (oParent != nullptr) Save(oPlatform, sName, sText);
    });
  }
  return sKind == "print" ? Wish::Print : Wish::None;
}

}  // namespace ZELWbr3::Desktop
