#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/testing/TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace ZELWbr3::Testing {

/// What an instance of any kind owes the pages. A kind takes part by
///
///     INSTANTIATE_TEST_SUITE_P(Kind, Contract, testing::Values(ContractCase{...}), ContractCase::Named);
struct ZELWBR3_EXPORT ContractCase {
  std::string Name;
  /// A connected instance whose members and reading operations all work. Its
  /// files are in the folder.
  std::function<std::shared_ptr<ZELLib3::Database>(const TempFolder& oFolder)> Make;
  /// A table with at least one row.
  std::string TableOwner;
  std::string TableName;
  /// Others are at work meanwhile: two looks at a view can differ.
  bool IsLive = false;

  /// The name of a case's tests.
  static std::string Named(const ::testing::TestParamInfo<ContractCase>& oInfo);
};

inline void PrintTo(const ContractCase& oCase, std::ostream* pStream) { *pStream << oCase.Name; }

class ZELWBR3_EXPORT Contract : public ::testing::TestWithParam<ContractCase> {
 protected:
  TempFolder m_oFolder;
  std::shared_ptr<ZELLib3::Database> m_oDatabase = GetParam().Make(m_oFolder);
};

}  // namespace ZELWbr3::Testing
