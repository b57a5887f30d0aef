#include "host/InstanceChecks.h"

#include "zelwbr3/base/Text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <utility>

#include <wx/process.h>
#include <wx/stream.h>
#include <wx/utils.h>

namespace ZELWbr3::Host {

namespace {

using nlohmann::json;
using Clock = std::chrono::steady_clock;
using Light = InstanceChecks::Light;

constexpr std::size_t kAtOnce = 4;
constexpr int kTick = 100;  // milliseconds

Health::Level LevelOf(const std::string& sName) {
  for (const auto eLevel : {Health::Level::OK, Health::Level::Warning, Health::Level::Critical}) {
    if (sName == Health::LevelName(eLevel)) return eLevel;
  }
  return Health::Level::Unknown;
}

/// What zelreport has written.
Light LightOf(const std::string& sInstance, const std::string& sOutput) {
  try {
    const json oCheck = json::parse(sOutput);
    Light oLight{LevelOf(oCheck.at("level")), oCheck.at("instance"), {}};
    if (!oCheck.at("findings").empty()) oLight.Text = oCheck["findings"][0].at("text");
    // What cannot be opened is named in the message, and has no other name.
    if (oLight.Name == sInstance) oLight.Name.clear();
    if (oLight.Text.starts_with(sInstance + ": ")) oLight.Text.erase(0, sInstance.size() + 2);
    return oLight;
  } catch (const json::exception&) {
    return {Health::Level::Unknown, {}, "The check has given no result"};
  }
}

}  // namespace

class InstanceChecks::Process : public wxProcess {
 public:
  Process(InstanceChecks& oOwner, std::string sInstance)
      : wxProcess(wxPROCESS_REDIRECT), Instance(std::move(sInstance)), m_oOwner(&oOwner) {}

  /// False if there is no such program.
  bool Run(const std::string& sProgram) {
    const char* const sArguments[] = {sProgram.c_str(), "--check", "--json", "--", Instance.c_str(), nullptr};
    m_lID = wxExecute(sArguments, wxEXEC_ASYNC | wxEXEC_MAKE_GROUP_LEADER, this);
    return m_lID > 0;
  }
  /// Nobody wants to know any more.
  void Abandon() {
    m_oOwner = nullptr;
    wxProcess::Kill(static_cast<int>(m_lID), wxSIGKILL, wxKILL_CHILDREN);
  }
  /// Takes what it has written; true when that is a whole line. The toolkit may not
  /// notice its end: another library may have taken over the signal.
  bool HasAnswered() {
    char sPiece[4096];
    while (IsInputAvailable() && Output.size() < kMost) {
      GetInputStream()->Read(sPiece, sizeof sPiece);
      if (GetInputStream()->LastRead() == 0) break;
      Output.append(sPiece, GetInputStream()->LastRead());
    }
    return Output.ends_with('\n');
  }
  /// Its answer has been taken.
  void Forget() { m_oOwner = nullptr; }
  /// The toolkit may tell its end before it has finished beginning it.
  void OnTerminate(int, int) override {
    m_bEnded = true;
    if (m_lID != 0) Leave();
  }
  bool HasEnded() const { return m_bEnded; }
  /// Gives the answer, if anybody wants to know, and deletes itself.
  void Leave() {
    HasAnswered();
    if (m_oOwner != nullptr) m_oOwner->Ended(*this);
    delete this;
  }

  std::string Output;
  const std::string Instance;
  const Clock::time_point Began = Clock::now();

 private:
  static constexpr std::size_t kMost = 1 << 20;

  InstanceChecks* m_oOwner;
  long m_lID = 0;
  bool m_bEnded = false;
};

InstanceChecks::InstanceChecks(std::string sProgram, std::function<void(const std::string&, const Light&)> oSeen)
    : m_sProgram(std::move(sProgram)), m_oSeen(std::move(oSeen)) {
  m_oTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Tick(); });
}

InstanceChecks::~InstanceChecks() { Stop(); }

void InstanceChecks::Start(std::vector<std::string> instances) {
  Stop();
  m_instances = std::move(instances);
  m_waiting.assign(m_instances.begin(), m_instances.end());
  m_oTimer.Start(kTick);
  Next();
}

void InstanceChecks::Stop() {
  m_oTimer.Stop();
  m_waiting.clear();
  for (Process* oProcess : std::exchange(m_running, {})) oProcess->Abandon();
}

void InstanceChecks::Next() {
  while (!m_waiting.empty() && m_running.size() < kAtOnce) {
    const std::string sInstance = m_waiting.front();
    m_waiting.pop_front();
    auto* oProcess = new Process(*this, sInstance);
    if (oProcess->Run(m_sProgram)) {
      m_running.push_back(oProcess);
      if (oProcess->HasEnded()) oProcess->Leave();
    } else {
      delete oProcess;
      m_oSeen(sInstance, {Health::Level::Unknown, {}, "It cannot be checked: \"" + m_sProgram + "\" cannot be run"});
    }
  }
  if (m_running.empty()) m_oRoundEnded = Clock::now();
}

void InstanceChecks::Ended(Process& oProcess) {
  std::erase(m_running, &oProcess);
  oProcess.Forget();
  m_oSeen(oProcess.Instance, LightOf(oProcess.Instance, oProcess.Output));
  Next();
}

void InstanceChecks::Tick() {
  const auto oAnswered = std::ranges::find_if(m_running, &Process::HasAnswered);
  if (oAnswered != m_running.end()) return Ended(**oAnswered);
  const auto oLate =
      std::ranges::find_if(m_running, [](const Process* o) { return Clock::now() - o->Began > MostTime; });
  if (oLate != m_running.end()) {
    Process* oProcess = *oLate;
    m_running.erase(oLate);
    oProcess->Abandon();
    m_oSeen(oProcess->Instance,
            {Health::Level::Unknown, {}, "No answer within " + std::to_string(MostTime.count()) + " s"});
    Next();
  } else if (m_running.empty() && Clock::now() - m_oRoundEnded > Pause) {
    m_waiting.assign(m_instances.begin(), m_instances.end());
    Next();
  }
}

}  // namespace ZELWbr3::Host
