#include "zelwbr3/web/Session.h"

#include "zelwbr3/web/Secrets.h"

#include <utility>

namespace ZELWbr3::Web {

Session::Session(std::string sCookie, std::size_t iInstance)
    : m_sNumber(MakeSecret()),
      m_sCookie(std::move(sCookie)),
      m_iInstance(iInstance),
      m_oPump([this] { m_oWire.Resume(); }) {}

Session::~Session() {
  if (m_oThread.joinable()) m_oThread.join();
}

void Session::Begin(const PageFiles& oFiles, const Greeting& oGreeting, const WebPlatform::TraceTo& oTrace,
                    Program oProgram, std::function<void()> oEnded) {
  m_oThread =
      std::thread([this, &oFiles, oGreeting, oTrace, oProgram = std::move(oProgram), oEnded = std::move(oEnded)] {
        try {
          WebPlatform oPlatform(m_oPump, m_oWire, oFiles, oGreeting, oTrace);
          m_oPlatform = &oPlatform;
          oProgram(oPlatform);
        } catch (const ClosingError& o) {
          // Otherwise, whoever ended it knows.
          if (oTrace && m_oPump.EndedByFault()) oTrace(std::string("A session has ended: ") + o.what());
        } catch (const std::exception& o) {
          if (oTrace) oTrace(std::string("A session has ended: ") + o.what());
        }
        m_oPlatform = nullptr;
        oEnded();
      });
}

bool Session::Arrive(std::string sMessage) {
  ++m_iArrived;
  return m_oPump.Arrive(std::move(sMessage));
}

void Session::BeginAgain(std::string sLoad, const Greeting& oGreeting) {
  m_sLoad = std::move(sLoad);
  m_iArrived = 0;
  m_oPump.Post([this, oGreeting] {
    if (m_oPlatform != nullptr) m_oPlatform->ShellBeginsAgain(oGreeting);
  });
}

void Session::End(const std::string& sReason) {
  m_bEnding = true;
  m_oPump.End(sReason);
}

}  // namespace ZELWbr3::Web
