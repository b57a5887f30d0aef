#pragma once

#include "host/InstanceChecks.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <wx/button.h>
#include <wx/dataview.h>
#include <wx/panel.h>

namespace ZELWbr3::Host {

/// What zelview shows without an instance: those opened lately, each with the light of
/// its health, which is looked at again and again, and what else can be opened.
class StartPage : public wxPanel {
 public:
  struct Actions {
    std::function<void(const std::string& sInstance)> Open;
    std::function<void(const std::string& sInstance)> OpenWindow;
    std::function<void(const std::string& sInstance)> Remove;
    /// Further buttons, with their texts.
    std::vector<std::pair<std::string, std::function<void()>>> Others;
  };

  StartPage(wxWindow* oParent, Actions oActions);

  /// Lists instances and begins to check them.
  void Begin(const std::vector<std::string>& instances);
  /// Ends the checks.
  void End();
  /// A light has come; for tests.
  std::function<void()> OnLight = [] {};
  /// What is seen of a row, from left to right.
  std::vector<std::string> Row(std::size_t i) const;

 private:
  void Write(std::size_t iRow, const wxString& sState, const std::string& sIcon, const InstanceChecks::Light& oLight);
  void Seen(const std::string& sInstance, const InstanceChecks::Light& oLight);
  std::optional<std::string> Selected() const;
  void EnableButtons();

  Actions m_oActions;
  std::vector<std::string> m_instances;
  wxDataViewListCtrl* m_oList;
  std::vector<wxButton*> m_buttons;  ///< those for the selected instance
  InstanceChecks m_oChecks;
};

}  // namespace ZELWbr3::Host
