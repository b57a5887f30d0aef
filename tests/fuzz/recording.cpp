#include "tests/fuzz/FuzzTarget.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"

#include <cstring>
#include <nlohmann/json.hpp>
#include <random>

int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t lBytes) {
  const std::string sPath = Fuzz::Write("it.json", {reinterpret_cast<const char*>(pBytes), lBytes});
  try {
    Fuzz::Exercise(ZELWbr3::Recorded::OpenRecording(sPath), lBytes);
  } catch (const ZELWbr3::Recorded::RecordingError&) {
    // Most inputs are none.
  }
  return 0;
}

#ifdef ZELWBR3_FUZZ

namespace {

using Json = nlohmann::ordered_json;

/// A value of the kind that the place wants, mostly, so that the file opens.
Json Hostile(const Json& oValue, std::mt19937& oRandom) {
  static const Json kNumbers = {0, 1, -1, 2, 3, 4, 5, 99, 100, 101, 2147483647, -2147483647, 32767, 1e308, -0.5};
  static const Json kTexts = {
      "", " ", "(null)", "<b>&\"'", "\u202e\u0000\u2028", std::string(70000, 'x'), "2026-01-02T03:04:05"};
  if (oRandom() % 20 == 0) return nullptr;
  if (oValue.is_boolean()) return !oValue.get<bool>();
  if (oValue.is_number()) return kNumbers[oRandom() % kNumbers.size()];
  return kTexts[oRandom() % kTexts.size()];
}

/// Changes one place of a recording.
void Change(Json& oAt, std::mt19937& oRandom) {
  if (!oAt.is_structured() || oAt.empty()) {
    oAt = Hostile(oAt, oRandom);
    return;
  }
  auto it = oAt.begin();
  std::advance(it, static_cast<std::ptrdiff_t>(oRandom() % oAt.size()));
  switch (oRandom() % 12) {
    case 0:
      oAt.erase(it);
      break;
    case 1:
      if (oAt.is_array()) oAt.push_back(Json(*it));
      break;
    default:
      Change(*it, oRandom);
  }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* pBytes, std::size_t lBytes, std::size_t lMost);

/// Bytes that are changed anywhere make a text that is no JSON: so mostly a value
/// is changed instead.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* pBytes, std::size_t lBytes, std::size_t lMost,
                                               unsigned lSeed) {
  std::mt19937 oRandom(lSeed);
  Json oRecording = Json::parse(pBytes, pBytes + lBytes, nullptr, false);
  if (oRecording.is_discarded() || oRandom() % 8 == 0) return LLVMFuzzerMutate(pBytes, lBytes, lMost);
  for (std::size_t i = 0; i <= oRandom() % 4; ++i) Change(oRecording, oRandom);
  const std::string sText = oRecording.dump(-1, ' ', false, Json::error_handler_t::replace);
  if (sText.size() > lMost) return lBytes;
  std::memcpy(pBytes, sText.data(), sText.size());
  return sText.size();
}

#endif
