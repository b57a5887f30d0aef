#include "zelwbr3/instances/recorded/format/Parse.h"

#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/instances/recorded/format/Path.h"
#include "zelwbr3/instances/recorded/format/RecordingError.h"

namespace ZELWbr3::Recorded {

namespace {

// A recording nests about ten levels.
constexpr std::size_t MaxDepth = 64;

// Builds the value while keeping the path to where the text stands.
class Builder : public nlohmann::json_sax<Json> {
 public:
  explicit Builder(const std::string& sFile) : m_sFile(sFile) {}

  Json Root() { return std::move(m_oRoot); }

  bool null() override { return Add(nullptr); }
  bool boolean(bool bValue) override { return Add(bValue); }
  bool number_integer(number_integer_t lValue) override { return Add(lValue); }
  bool number_unsigned(number_unsigned_t lValue) override { return Add(lValue); }
  bool number_float(number_float_t dValue, const string_t&) override { return Add(dValue); }
  bool string(string_t& sValue) override { return Add(std::move(sValue)); }
  bool binary(binary_t&) override { return false; }  // JSON text has none
  bool start_object(std::size_t) override { return Open(Json::object()); }
  bool start_array(std::size_t) override { return Open(Json::array()); }
  bool end_object() override { return Close(); }
  bool end_array() override { return Close(); }

  bool key(string_t& sKey) override {
    Level& oLevel = m_oLevels.back();
    oLevel.sKey = std::move(sKey);
    if (oLevel.pValue->contains(oLevel.sKey)) throw RecordingError(m_sFile, Where(), "expected each key once");
    return true;
  }

  bool parse_error(std::size_t, const std::string& sToken, const nlohmann::detail::exception& oError) override {
    if (oError.id == 406) {
      throw RecordingError(m_sFile, Where(), "expected a number that a double can hold, found " + Quoted(sToken));
    }
    // "[json.exception.parse_error.101] parse error at line 1, column 2: ..."
    std::string sWhat = oError.what();
    if (const auto lAt = sWhat.find("] "); lAt != std::string::npos) sWhat.erase(0, lAt + 2);
    // The message ends with what was expected, but repeats the last token,
    // which may be as long as the file.
    constexpr std::size_t lHead = 150;
    if (sWhat.size() > 2 * lHead) sWhat = sWhat.substr(0, lHead) + " ... " + sWhat.substr(sWhat.size() - lHead);
    const std::string sClean = Json(sWhat).dump(-1, ' ', true, Json::error_handler_t::replace);
    throw RecordingError(m_sFile, Where(), "not JSON, expected UTF-8 JSON text: " + sClean);
  }

 private:
  struct Level {
    Json* pValue;
    std::string sKey;  // of an object
  };

  bool Add(Json oValue) {
    Place(std::move(oValue));
    return true;
  }

  bool Open(Json oValue) {
    if (m_oLevels.size() >= MaxDepth) {
      throw RecordingError(m_sFile, Where(), "expected at most " + std::to_string(MaxDepth) + " levels of nesting");
    }
    // The levels above stay where they are: nothing is added to them before
    // this one is closed.
    m_oLevels.push_back({&Place(std::move(oValue)), {}});
    return true;
  }

  bool Close() {
    m_oLevels.pop_back();
    return true;
  }

  Json& Place(Json oValue) {
    if (m_oLevels.empty()) return m_oRoot = std::move(oValue);
    Json& oParent = *m_oLevels.back().pValue;
    if (oParent.is_array()) return oParent.emplace_back(std::move(oValue));
    return oParent[m_oLevels.back().sKey] = std::move(oValue);
  }

  // The place of the value that comes next.
  std::string Where() const { return Where(Path(), 0); }
  std::string Where(const Path& oPath, std::size_t lLevel) const {
    if (lLevel == m_oLevels.size()) return oPath.Text();
    const Level& oLevel = m_oLevels[lLevel];
    if (oLevel.pValue->is_array()) {
      // An open level is its parent's last entry already.
      const bool bOpen = lLevel + 1 < m_oLevels.size();
      return Where(Path(oPath, oLevel.pValue->size() - (bOpen ? 1 : 0)), lLevel + 1);
    }
    // Before its first key an object has no place but its own.
    if (oLevel.sKey.empty() && oLevel.pValue->empty()) return oPath.Text();
    return Where(Path(oPath, oLevel.sKey), lLevel + 1);
  }

  const std::string& m_sFile;
  Json m_oRoot;
  std::vector<Level> m_oLevels;
};

}  // namespace

Json ParseFile(const std::string& sFile) {
  const std::string sText = [&] {
    try {
      return ReadFile(sFile);
    } catch (const ReadFileError& oError) {
      throw RecordingError(sFile, {}, std::string(oError.what()) + "; expected a recording");
    }
  }();
  Builder oBuilder(sFile);
  Json::sax_parse(sText, &oBuilder);
  return oBuilder.Root();
}

}  // namespace ZELWbr3::Recorded
