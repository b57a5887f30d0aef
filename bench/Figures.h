#pragma once

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZELWbr3::Bench {

inline double Milliseconds(const std::function<void()>& oWork) {
  const auto oStart = std::chrono::steady_clock::now();
  oWork();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - oStart).count();
}

inline double Median(std::vector<double> values) {
  std::ranges::sort(values);
  const std::size_t iMiddle = values.size() / 2;
  return values.size() % 2 == 1 ? values[iMiddle] : (values[iMiddle - 1] + values[iMiddle]) / 2;
}

/// The figures by name, in order.
class Figures {
 public:
  void Add(const std::string& sName, double dValue, const std::string& sMeaning) {
    m_oJSON[sName] = dValue;
    std::printf("%-28s %12.2f  %s\n", sName.c_str(), dValue, sMeaning.c_str());
    std::fflush(stdout);
  }

  /// Adds them to those that another program has written into the file.
  void AddTo(const std::string& sFile) const {
    nlohmann::ordered_json oAll = nlohmann::ordered_json::object();
    if (std::ifstream oBefore(sFile); oBefore) oAll = nlohmann::ordered_json::parse(oBefore);
    oAll.update(m_oJSON);
    std::ofstream oFile(sFile);
    oFile << oAll.dump(2) << '\n';
    oFile.close();
    if (!oFile) throw std::runtime_error("The file \"" + sFile + "\" cannot be written");
  }

 private:
  nlohmann::ordered_json m_oJSON = nlohmann::ordered_json::object();
};

}  // namespace ZELWbr3::Bench
