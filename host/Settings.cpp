#include "host/Settings.h"

#include "host/OpenInstance.h"
#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/base/ReplaceFile.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

fs::path File() {
  const char* pConfig = std::getenv("XDG_CONFIG_HOME");
  if (pConfig != nullptr && *pConfig != '\0') return fs::path(pConfig) / "zelview/settings.json";
  const char* pHome = std::getenv("HOME");
  return fs::path(pHome == nullptr ? "/" : pHome) / ".config/zelview/settings.json";
}

template <typename T>
T Member(const json& oSettings, const char* sName, T oDefault) {
  const auto it = oSettings.find(sName);
  if (it == oSettings.end()) return oDefault;
  try {
    return it->get<T>();
  } catch (const json::exception&) {
    return oDefault;
  }
}

}  // namespace

void Settings::Opened(const std::string& sInstance) {
  std::string sShown = ShownInstance(sInstance);
  const auto iColon = sShown.find(':');
  const std::string sKind = iColon == sShown.npos ? "" : sShown.substr(0, iColon);
  std::error_code eIgnored;
  if (sKind == "recorded" || sKind == "sqlite") {
    sShown = sKind + ":" + fs::absolute(sShown.substr(iColon + 1), eIgnored).lexically_normal().string();
  } else if (fs::exists(sShown, eIgnored)) {
    sShown = fs::absolute(sShown, eIgnored).lexically_normal().string();
  }
  std::erase(Recent, sShown);
  Recent.insert(Recent.begin(), sShown);
  if (Recent.size() > kMostRecent) Recent.resize(kMostRecent);
}

Settings Settings::Load() {
  Settings oResult;
  json oSettings;
  try {
    oSettings = json::parse(ReadFile(File().string(), 1 << 20), nullptr, false);
  } catch (const ReadFileError&) {
    return oResult;
  }
  if (!oSettings.is_object()) return oResult;
  oResult.Recent = Member(oSettings, "recent", oResult.Recent);
  if (oResult.Recent.size() > kMostRecent) oResult.Recent.resize(kMostRecent);
  oResult.Width = std::clamp(Member(oSettings, "width", oResult.Width), 480, 10000);
  oResult.Height = std::clamp(Member(oSettings, "height", oResult.Height), 400, 10000);
  oResult.Page = Member(oSettings, "page", oResult.Page);
  oResult.Unit = std::clamp(Member(oSettings, "unit", oResult.Unit), -1, 4);
  oResult.Theme = Member(oSettings, "theme", oResult.Theme);
  return oResult;
}

void Settings::Save() const {
  const fs::path oFile = File();
  const json oSettings = {{"recent", Recent}, {"width", Width}, {"height", Height},
                          {"page", Page},     {"unit", Unit},   {"theme", Theme}};
  try {
    fs::create_directories(oFile.parent_path());
    ReplaceFile(oFile.string(), oSettings.dump(2, ' ', false, json::error_handler_t::replace) + "\n");
  } catch (const std::exception& oError) {
    throw std::runtime_error("The settings \"" + oFile.string() + "\" cannot be saved: " + oError.what());
  }
}

}  // namespace ZELWbr3::Host
