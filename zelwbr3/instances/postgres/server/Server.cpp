#include "zelwbr3/instances/postgres/server/Server.h"

#include "zelwbr3/instances/common/ThisSystem.h"
#include "zelwbr3/instances/common/settings/ObservationStore.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace ZELWbr3::Postgres {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// As the session's own timeout, which servers before 14 do not have.
constexpr auto kIdle = 10min;
constexpr int kHasIdleTimeout = 140000;

constexpr char kDataDirectory[] = "data_directory";

/// What is remembered of a server that has not been asked yet.
std::string AddressKey(const Address& oAddress) {
  return "postgresql " + oAddress.Value("host") + ":" + oAddress.Value("port");
}

/// A host that can only be this machine.
bool IsHere(const std::string& sHost) {
  return sHost.empty() || sHost.starts_with('/') || sHost.starts_with('@') || sHost == "localhost" ||
         sHost == "127.0.0.1" || sHost == "::1";
}

Address Resolved(std::string_view sAddress, const Options& oOptions) {
  Address oAddress(sAddress);
  if (oAddress.Password().empty()) oAddress.Password(oOptions.Password);
  return oAddress;
}

}  // namespace

Server::Server(std::string_view sAddress, const Postgres::Options& oOptions)
    : m_oAddress(Resolved(sAddress, oOptions)), m_oOptions(oOptions) {
  if (const std::string sDirectory = RememberedDirectory(); !sDirectory.empty()) m_oLocal.emplace(sDirectory);
  if (Read()->Status != 0 || !m_oFailure) return;
  try {
    std::rethrow_exception(m_oFailure);
  } catch (const ServerError& oError) {
    // What the server refuses, it may refuse for good; silence may be over soon.
    const bool bRefused = !oError.SQLState().empty() || dynamic_cast<const PasswordNeeded*>(&oError) != nullptr;
    const bool bKnown = m_oLocal || dynamic_cast<const LoginWaits*>(&oError) != nullptr;
    if (bRefused || !bKnown) throw;
  }
}

std::shared_ptr<const Reading> Server::Read() {
  if (!m_oReading || Clock::now() >= m_dReadingEnds) {
    m_oReading = std::make_shared<const Reading>(Look());
    m_dReadingEnds = Clock::now() + m_oOptions.ReadingLifetime;
  }
  return m_oReading;
}

Reading Server::Look() {
  try {
    std::optional<Figures> oFigures;
    Use([&](Connection& oConnection) {
      oFigures = Figures::Read(oConnection, m_oRights, m_oSizes);
      AddRoom(*oFigures, oConnection);
    });
    return Reading::Of(std::move(*oFigures));
  } catch (const NoAnswer& oError) {
    if (!m_oFailure) return Reading::WithoutFigures(oError);
    return Reading::NotConnected(oError, Local());
  } catch (const ConnectionLost& oError) {
    return Reading::NotConnected(oError, Local());
  } catch (const ServerError& oError) {
    return m_oFailure ? Reading::NotConnected(oError, Local()) : Reading::WithoutFigures(oError);
  }
}

void Server::Use(const std::function<void(Connection&)>& oReading) {
  const Waiter::Task oTask(m_oWaiter, m_oOptions.ReadingTimeout);
  try {
    oReading(Current());
  } catch (const ConnectionLost&) {
    // Another server may answer: everything is asked anew.
    m_oConnection.reset();
    oReading(Current());
  }
}

std::optional<Result> Server::Ask(std::string_view sQuery, const std::string& sAsked,
                                  const Connection::Parameters& parameters) {
  std::optional<Result> oResult;
  Use([&](Connection& oConnection) {
    const Query* pQuery = Queries::Find(sQuery, m_oRights);
    if (pQuery != nullptr) oResult = oConnection.Execute(pQuery->For(m_oRights), sAsked, parameters);
  });
  return oResult;
}

Connection& Server::Current() {
  const auto dIdle = Clock::now() - m_dUsed;
  const bool bExpired = m_oConnection && m_oRights.Version < kHasIdleTimeout && dIdle > kIdle;
  if (m_oConnection && (m_oConnection->IsLost() || bExpired)) m_oConnection.reset();
  if (!m_oConnection) Connect();
  m_dUsed = Clock::now();
  return *m_oConnection;
}

void Server::Connect() {
  const auto dBegin = Clock::now();
  // A page asks some dozens of times; it waits once.
  if (m_oFailure && dBegin < m_dFailureEnds) std::rethrow_exception(m_oFailure);
  m_oFailure = nullptr;
  try {
    auto oConnection = std::make_unique<Connection>(m_oAddress, m_oWaiter, m_oOptions.Sending);
    m_oRights = Rights::Of(*oConnection, Name());
    m_oSizes = {};
    FindFiles(*oConnection);
    m_oConnection = std::move(oConnection);
  } catch (const ServerError&) {
    m_oFailure = std::current_exception();
    const auto dEnd = Clock::now();
    m_dFailureEnds = dEnd + std::max<Clock::duration>(m_oOptions.ReadingLifetime, dEnd - dBegin);
    throw;
  }
}

/// Where the files are, and whether that is here, is known best while the server
/// can be asked.
void Server::FindFiles(const Connection& oConnection) {
  m_oLocal.reset();
  if (!LocalServer::RunsHere(oConnection.Process(), static_cast<std::time_t>(m_oRights.ConnectedOn))) return;
  std::string sDirectory = m_oRights.DataDirectory;
  if (sDirectory.empty()) sDirectory = RememberedDirectory();
  if (sDirectory.empty()) return;
  m_oLocal.emplace(sDirectory);
  if (!m_oOptions.Observations || m_oRights.DataDirectory.empty()) return;
  try {
    m_oOptions.Observations->Remember(AddressKey(m_oAddress), {{kDataDirectory, sDirectory}});
  } catch (const ZELLib3::InstanceError&) {
    // It is only needed for a server that is stopped, which then is not found.
  }
}

std::string Server::RememberedDirectory() const {
  if (!m_oOptions.DataDirectory.empty()) return m_oOptions.DataDirectory;
  try {
    if (m_oOptions.Observations) {
      const auto oFacts = m_oOptions.Observations->Facts(AddressKey(m_oAddress));
      if (const auto it = oFacts.find(kDataDirectory); it != oFacts.end()) return it->second;
    }
  } catch (const ZELLib3::InstanceError&) {
    // As without anything remembered.
  }
  if (!IsHere(m_oAddress.Value("host"))) return {};
  int lPort = 5432;
  const std::string sPort = m_oAddress.Value("port");
  std::from_chars(sPort.data(), sPort.data() + sPort.size(), lPort);
  return LocalServer::FromEnvironment(lPort);
}

void Server::AddRoom(Figures& oFigures, Connection& oConnection) const {
  if (!m_oLocal) return;
  // What is left makes no whole with a part of what is used.
  if (oFigures.DataIsComplete) {
    std::vector<std::string> folders = {m_oLocal->DataDirectory()};
    const Result o = oConnection.Execute(Queries::SQL("reading.locations"), "reading the state");
    for (int i = 0; i < o.Rows(); ++i) folders.push_back(o.Text(i, "location"));
    for (const FileSystem& oDisk : FileSystemsOf(folders)) {
      oFigures.DataRoom = oFigures.DataRoom.value_or(0) + oDisk.BytesLeft;
      oFigures.LeastDataRoom = std::min(oFigures.LeastDataRoom.value_or(oDisk.BytesLeft), oDisk.BytesLeft);
    }
  }
  if (const auto oLog = RoomAt(m_oLocal->WalDirectory()); oLog && m_oLocal->IsReadable()) {
    oFigures.LogRoom = oLog->BytesLeft;
  }
}

std::optional<FileSystem> Server::RoomAt(const std::string& sFolder) const {
  if (!m_oLocal) return std::nullopt;
  const auto disks = FileSystemsOf({sFolder});
  if (disks.empty()) return std::nullopt;
  return disks.front();
}

std::string Server::InstanceName() const {
  if (!m_oRights.ClusterName.empty()) return m_oRights.ClusterName;
  const std::string sHost = m_oConnection ? m_oConnection->Host() : m_oAddress.Value("host");
  if (!sHost.empty() && !sHost.starts_with('/') && !sHost.starts_with('@')) return sHost;
  return Instances::ThisSystem().nodename;
}

std::string Server::Key() const {
  if (m_oRights.SystemIdentifier.empty()) return AddressKey(m_oAddress);
  const std::string sPlace = DataDirectory();
  return "postgresql " + m_oRights.SystemIdentifier + " " + (sPlace.empty() ? std::to_string(m_oRights.Port) : sPlace);
}

void Server::Disconnect() {
  m_oConnection.reset();
  m_oReading.reset();
  m_oFailure = nullptr;
}

bool Server::Try(const std::function<void()>& oWork) {
  try {
    oWork();
    return true;
  } catch (const ZELLib3::InstanceError& oError) {
    m_oLastError = oError.ErrorObject();
    return false;
  }
}

bool Server::Attempt(const std::function<void(Connection&)>& oReading) {
  return Try([&] { Use(oReading); });
}

bool Server::Operate(const std::function<void(Connection&)>& oOperation) {
  const bool bDone = Try([&] {
    const Waiter::Task oTask(m_oWaiter, m_oOptions.ReadingTimeout);
    oOperation(Current());
  });
  m_oReading.reset();
  return bDone;
}

bool Server::Refresh() {
  const auto oReading = Read();
  if (!oReading->IsConnected) m_oLastError = oReading->Why;
  return oReading->IsConnected;
}

bool Server::RefreshFigures() {
  const auto oReading = Read();
  if (!oReading->Figures) m_oLastError = oReading->Why;
  return oReading->Figures != nullptr;
}

bool Server::Refuse(const std::string& sWhy) {
  m_oLastError = {0, Name() + ": " + sWhy};
  return false;
}

ZELLib3::Long Server::Pages(std::int64_t lBytes) const {
  const std::int64_t lPages = (lBytes + PageSize() - 1) / PageSize();
  return std::clamp<std::int64_t>(lPages, 0, std::numeric_limits<std::int32_t>::max());
}

}  // namespace ZELWbr3::Postgres
