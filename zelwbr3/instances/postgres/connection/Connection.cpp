#include "zelwbr3/instances/postgres/connection/Connection.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/postgres/connection/Queries.h"

#include <sys/poll.h>

#include <algorithm>
#include <charconv>
#include <thread>

namespace ZELWbr3::Postgres {

namespace {

using namespace std::chrono_literals;
using Clock = Waiter::Clock;

/// An answer that comes within this time is worth no other thread.
constexpr auto kSoon = 20ms;

constexpr auto kEnding = 5s;

/// A rollback would be counted as one, among those of applications.
constexpr char kEndReading[] = "COMMIT";

/// What a server may take to end a statement that nobody waits for any more.
constexpr auto kLastWords = 250ms;

constexpr char kConnecting[] = "connecting";

/// A host's own settings come first.
constexpr std::pair<const char*, const char*> kDefaults[] = {{"fallback_application_name", "zelwbr3"},
                                                             {"client_encoding", "UTF8"},
                                                             {"keepalives_idle", "30"},
                                                             {"tcp_user_timeout", "10000"}};

std::chrono::milliseconds ConnectTimeoutOf(const Address& oAddress) {
  const std::string sValue = oAddress.Value("connect_timeout");
  int lSeconds = 0;
  std::from_chars(sValue.data(), sValue.data() + sValue.size(), lSeconds);
  // As libpq reads it: none or less waits for ever, which no page may, and 1 is 2.
  if (lSeconds <= 0) return Connection::ConnectTimeout;
  return std::chrono::seconds(std::clamp(lSeconds, 2, 60));
}

/// Settings as libpq takes them. The settings outlive it.
class Arguments {
 public:
  explicit Arguments(const Address::Settings& oSettings) {
    for (const auto& [sKeyword, sValue] : oSettings) {
      m_keywords.push_back(sKeyword.c_str());
      m_values.push_back(sValue.c_str());
    }
    m_keywords.push_back(nullptr);
    m_values.push_back(nullptr);
  }
  const char* const* Keywords() const { return m_keywords.data(); }
  const char* const* Values() const { return m_values.data(); }

 private:
  std::vector<const char*> m_keywords;
  std::vector<const char*> m_values;
};

/// One part of a message of libpq: "severity:  SQLSTATE: text", with its details
/// in the lines after it, as its verbose form has them.
struct Message {
  std::string SQLState;
  std::string Text;
};

Message ParseVerbose(const std::string& sMessage) {
  const auto IsCode = [](std::string_view s) {
    return std::ranges::all_of(s, [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z'); });
  };
  for (std::size_t i = 0; (i = sMessage.find(":  ", i)) != std::string::npos; ++i) {
    const auto iCode = i + 3;
    if (sMessage.compare(iCode + 5, 2, ": ") != 0 || !IsCode(std::string_view(sMessage).substr(iCode, 5))) continue;
    const auto iEnd = std::min(sMessage.find('\n', iCode), sMessage.size());
    return {sMessage.substr(iCode, 5), sMessage.substr(iCode + 7, iEnd - iCode - 7)};
  }
  return {{}, sMessage};
}

std::string Field(const PGresult* pResult, int iField) {
  const char* pText = pResult == nullptr ? nullptr : PQresultErrorField(pResult, iField);
  return pText == nullptr ? std::string() : pText;
}

/// A message in one line. What libpq adds in a further one is a sentence of its own.
std::string Line(const std::string& sText) {
  std::string sLine = Text::Trim(sText, " \n");
  for (std::size_t i = 0; (i = sLine.find("\n\t", i)) != std::string::npos;) sLine.replace(i, 2, ". ");
  return Text::Trim(Text::OneLine(sLine));
}

std::string SecondsText(std::chrono::milliseconds dTime) {
  return std::to_string(std::chrono::ceil<std::chrono::seconds>(dTime).count()) + " s";
}

/// Returns when the server has taken the request.
void Cancel(PGcancel& oCancel) {
  char sIgnored[256];
  PQcancel(&oCancel, sIgnored, sizeof sIgnored);
}

}  // namespace

Connection::Connection(const Address& oAddress, Waiter& oWaiter, StatementObserver oSending)
    : m_oAddress(oAddress), m_oWaiter(oWaiter), m_oSending(std::move(oSending)), m_oHandle(nullptr, PQfinish) {
  const auto hosts = oAddress.EachHost();
  for (std::size_t i = 0; i < hosts.size(); ++i) {
    try {
      m_oWaiter.Run([&] { Connect(hosts[i]); });
      break;
    } catch (const PasswordNeeded&) {
      throw;
    } catch (const ServerError& oError) {
      // As libpq: another host is tried only when this one did not answer.
      const bool bAnswered = !oError.SQLState().empty() && oError.SQLState() != "57P03";
      if (bAnswered || i + 1 == hosts.size()) throw;
    }
  }
  PQsetErrorVerbosity(m_oHandle.get(), PQERRORS_DEFAULT);
  // What the server tells by the way belongs on nobody's screen.
  PQsetNoticeReceiver(
      m_oHandle.get(), [](void*, const PGresult*) {}, nullptr);
  PQsetnonblocking(m_oHandle.get(), 1);
  m_oCancel.reset(PQgetCancel(m_oHandle.get()), PQfreeCancel);
  CheckDirect();
  SetUpSession();
}

Connection::~Connection() {
  if (m_pCursor != nullptr) m_pCursor->m_pConnection = nullptr;
}

void Connection::Connect(const Address::Settings& oSettings) {
  Address::Settings oAll = oSettings;
  oAll.insert(std::begin(kDefaults), std::end(kDefaults));
  if (!m_oAddress.Password().empty()) oAll["password"] = m_oAddress.Password();
  const Arguments oArguments(oAll);
  m_oHandle.reset(PQconnectStartParams(oArguments.Keywords(), oArguments.Values(), 0));
  if (m_oHandle == nullptr) throw std::bad_alloc();
  // The only way to the SQLSTATE of a refusal.
  PQsetErrorVerbosity(m_oHandle.get(), PQERRORS_VERBOSE);
  const auto dTimeout = ConnectTimeoutOf(m_oAddress);
  const auto dUntil = Clock::now() + dTimeout;
  PostgresPollingStatusType eStep = PGRES_POLLING_WRITING;
  while (PQstatus(m_oHandle.get()) != CONNECTION_BAD) {
    const auto eEnd =
        m_oWaiter.Await(PQsocket(m_oHandle.get()), eStep == PGRES_POLLING_READING ? POLLIN : POLLOUT, dUntil);
    if (eEnd == Waiter::End::TimeIsUp) RaiseNoAnswer(dTimeout);
    if (eEnd == Waiter::End::Interrupted) RaiseInterrupted(kConnecting);
    eStep = PQconnectPoll(m_oHandle.get());
    if (eStep == PGRES_POLLING_OK) return;
    if (eStep == PGRES_POLLING_FAILED) break;
  }
  RaiseNotConnected();
}

/// A pooler tells a process number of its own.
void Connection::CheckDirect() {
  const std::string sAsked = "asking for the server process";
  const Result oAnswer = Execute("SELECT pg_catalog.pg_backend_pid()", sAsked);
  m_lProcess = static_cast<int>(std::stol(oAnswer.Text(0, 0)));
  if (m_lProcess == PQbackendPID(m_oHandle.get())) return;
  throw ServerError(
      {}, m_oAddress.Shown(), sAsked,
      "a pooler stands in between, whose server connections others use, too; connect to the server itself");
}

/// Until the search path is ours, every name is qualified: somebody else may have
/// put a schema in front, with functions of the same names.
void Connection::SetUpSession() {
  const std::string sAsked = "setting up the session";
  m_sSearchPath = Execute("SELECT pg_catalog.current_schemas(true)", sAsked).Text(0, 0);
  Execute("SELECT pg_catalog.set_config('search_path', 'pg_catalog', false)", sAsked);
  Execute(Queries::SQL("session"), sAsked);
}

Result Connection::Execute(const std::string& sSQL, const std::string& sAsked, const Parameters& parameters) {
  EndCursor();
  Send(sSQL, sAsked, parameters);
  Result oLast(nullptr);
  Finish(sAsked, [&](const Result& oPart) {
    oLast = oPart;
    return true;
  });
  return oLast;
}

void Connection::ExecuteAll(const std::string& sSQL, const std::string& sAsked) {
  EndCursor();
  if (m_oSending) m_oSending({sSQL, {}});
  if (PQsendQuery(m_oHandle.get(), sSQL.c_str()) == 0) RaiseLost(sAsked, PQerrorMessage(m_oHandle.get()));
  Finish(sAsked, [](const Result&) { return true; });
}

void Connection::Stream(const std::string& sSQL, const std::string& sAsked, const Parameters& parameters,
                        const RowTaker& oTake) {
  EndCursor();
  SendRows(sSQL, sAsked, parameters);
  Finish(sAsked, oTake);
}

void Connection::Send(const std::string& sSQL, const std::string& sAsked, const Parameters& parameters) {
  if (m_oSending) m_oSending({sSQL, parameters});
  std::vector<const char*> values;
  values.reserve(parameters.size());
  for (const auto& oValue : parameters) values.push_back(oValue ? oValue->c_str() : nullptr);
  if (PQsendQueryParams(m_oHandle.get(), sSQL.c_str(), static_cast<int>(values.size()), nullptr, values.data(), nullptr,
                        nullptr, 0) == 0) {
    RaiseLost(sAsked, PQerrorMessage(m_oHandle.get()));
  }
}

void Connection::SendRows(const std::string& sSQL, const std::string& sAsked, const Parameters& parameters) {
  Send(sSQL, sAsked, parameters);
  PQsetSingleRowMode(m_oHandle.get());
}

/// Takes the parts of an answer. What does not come soon is waited for in the
/// background, and taken there.
void Connection::Finish(const std::string& sAsked, const RowTaker& oTake) {
  std::shared_ptr<PGresult> oFailed;
  bool bEnough = false;
  const auto TakeNext = [&] {
    AwaitAnswer(sAsked);
    std::shared_ptr<PGresult> oPart(PQgetResult(m_oHandle.get()), PQclear);
    if (oPart == nullptr) return false;
    if (bEnough) return true;
    if (PQresultStatus(oPart.get()) != PGRES_FATAL_ERROR) {
      bEnough = !oTake(Result(oPart));
      if (bEnough) Cancel(*m_oCancel);
    } else if (oFailed == nullptr) {
      oFailed = oPart;
    }
    return true;
  };
  // Most answers are there at once.
  const auto dSoon = Clock::now() + kSoon;
  const auto IsThereSoon = [&] {
    while (!HasAnswer()) {
      if (m_oWaiter.Await(PQsocket(m_oHandle.get()), POLLIN, dSoon) != Waiter::End::Ready) return HasAnswer();
    }
    return true;
  };
  bool bMore = true;
  while (bMore && IsThereSoon()) bMore = TakeNext();
  if (bMore) {
    m_oWaiter.Run([&] {
      while (TakeNext()) {
      }
    });
  }
  if (oFailed != nullptr && m_bGivenUp) RaiseInterrupted(sAsked);
  if (oFailed != nullptr) Raise(oFailed.get(), sAsked);
}

/// What has arrived is taken in; true when the next part of the answer is whole,
/// or will not come.
bool Connection::HasAnswer() {
  if (PQisBusy(m_oHandle.get()) == 0) return true;
  return PQflush(m_oHandle.get()) < 0 || PQconsumeInput(m_oHandle.get()) == 0 || PQisBusy(m_oHandle.get()) == 0;
}

void Connection::AwaitAnswer(const std::string& sAsked) {
  while (!HasAnswer()) {
    if (m_bGivenUp) {
      if (!HearsLastWords()) RaiseInterrupted(sAsked);
      continue;
    }
    const short lEvents = PQflush(m_oHandle.get()) > 0 ? POLLIN | POLLOUT : POLLIN;
    const auto eEnd = m_oWaiter.Await(PQsocket(m_oHandle.get()), lEvents, m_oWaiter.Deadline());
    if (eEnd == Waiter::End::Ready) continue;
    GiveUp();
    if (eEnd == Waiter::End::Interrupted) continue;
    throw NoAnswer({}, m_oAddress.Shown(), sAsked, "the server has not answered in time");
  }
}

/// A server that is asked to end a statement first sends the rows that it has.
bool Connection::HearsLastWords() const {
  const auto dLeft = std::chrono::ceil<std::chrono::milliseconds>(m_dGivenUp + kLastWords - Clock::now());
  pollfd oPoll = {PQsocket(m_oHandle.get()), POLLIN, 0};
  return dLeft > 0ms && poll(&oPoll, 1, static_cast<int>(dLeft.count())) > 0;
}

/// Asks the server to cancel the statement, and gives the connection up: the
/// request goes its own way, nobody knows how fast, and must not hit the next
/// statement.
void Connection::GiveUp() {
  std::thread([oCancel = m_oCancel] { Cancel(*oCancel); }).detach();
  m_bGivenUp = true;
  m_dGivenUp = Clock::now();
}

bool Connection::IsLost() const { return m_bGivenUp || PQstatus(m_oHandle.get()) == CONNECTION_BAD; }

void Connection::Raise(const PGresult* pResult, const std::string& sAsked) const {
  const std::string sState = Field(pResult, PG_DIAG_SQLSTATE);
  std::string sText = Line(Field(pResult, PG_DIAG_MESSAGE_PRIMARY));
  if (const std::string sDetail = Line(Field(pResult, PG_DIAG_MESSAGE_DETAIL)); !sDetail.empty()) {
    sText += " (" + sDetail + ")";
  }
  if (IsLost()) {
    const std::string sWhy = sText.empty() ? Line(PQerrorMessage(m_oHandle.get())) : sText;
    throw ConnectionLost(sState, m_oAddress.Shown(), sAsked, m_oAddress.Hide(sWhy));
  }
  throw ServerError(sState, m_oAddress.Shown(), sAsked, m_oAddress.Hide(sText));
}

void Connection::RaiseLost(const std::string& sAsked, const std::string& sWhy) const {
  throw ConnectionLost({}, m_oAddress.Shown(), sAsked, m_oAddress.Hide(Line(sWhy)));
}

void Connection::RaiseNoAnswer(std::chrono::milliseconds dWaited) const {
  const std::string sWaited = "no answer within " + SecondsText(dWaited);
  if (PQstatus(m_oHandle.get()) == CONNECTION_STARTED) throw NoAnswer({}, m_oAddress.Shown(), kConnecting, sWaited);
  throw LoginWaits({}, m_oAddress.Shown(), kConnecting,
                   sWaited + " to the login, although the server runs: a system table may be locked");
}

void Connection::RaiseInterrupted(const std::string& sAsked) const {
  throw ServerError("57014", m_oAddress.Shown(), sAsked, "interrupted");
}

void Connection::RaiseNotConnected() const {
  const Message oMessage = ParseVerbose(m_oAddress.Hide(PQerrorMessage(m_oHandle.get())));
  const std::string sText = Line(oMessage.Text);
  if (PQconnectionNeedsPassword(m_oHandle.get()) != 0) {
    throw PasswordNeeded(oMessage.SQLState, m_oAddress.Shown(), kConnecting,
                         "the server asks for a password, and none is given, nor found in the password file");
  }
  throw ServerError(oMessage.SQLState, m_oAddress.Shown(), kConnecting, sText);
}

Connection::Snapshot::Snapshot(Connection& oConnection, const std::string& sAsked) : m_oConnection(oConnection) {
  oConnection.Execute("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY", sAsked);
}

Connection::Snapshot::~Snapshot() { m_oConnection.EndTransaction(kEndReading); }

Connection::Cursor::Cursor(Connection& oConnection, const std::string& sSQL, std::string sAsked)
    : m_pConnection(&oConnection), m_sAsked(std::move(sAsked)) {
  try {
    oConnection.ExecuteAll("BEGIN READ ONLY; DECLARE list NO SCROLL CURSOR FOR " + sSQL, m_sAsked);
  } catch (const ServerError&) {
    oConnection.EndTransaction(kEndReading);
    throw;
  }
  oConnection.m_pCursor = this;
}

Connection::Cursor::~Cursor() {
  if (m_pConnection != nullptr) m_pConnection->EndCursor();
}

void Connection::Cursor::Fetch(std::size_t lRows, const RowTaker& oTake) {
  m_pConnection->SendRows("FETCH " + std::to_string(lRows) + " FROM list", m_sAsked);
  m_pConnection->Finish(m_sAsked, oTake);
}

void Connection::EndCursor() {
  if (m_pCursor == nullptr) return;
  std::exchange(m_pCursor, nullptr)->m_pConnection = nullptr;
  EndTransaction(kEndReading);
}

/// Also from outside a task, when nobody wants to wait: a connection that does not
/// answer soon is given up, which ends its transaction too.
void Connection::EndTransaction(const char* sCommand) {
  if (IsLost()) return;
  const Waiter::Task oTask(m_oWaiter, kEnding);
  try {
    Execute(sCommand, "ending a transaction");
  } catch (...) {  // also what ends the waiting
    m_bGivenUp = true;
  }
}

Connection::Change::Change(Connection& oConnection, const std::string& sAsked)
    : m_oConnection(oConnection), m_sAsked(sAsked) {
  oConnection.Execute("BEGIN READ WRITE", sAsked);
}

Connection::Change::~Change() {
  if (m_bOpen) m_oConnection.EndTransaction("ROLLBACK");
}

/// Nobody could tell whether one that was interrupted has taken place.
void Connection::Change::Commit() {
  m_oConnection.m_oWaiter.Shelter([&] { m_oConnection.Execute("COMMIT", m_sAsked); });
  m_bOpen = false;
}

}  // namespace ZELWbr3::Postgres
