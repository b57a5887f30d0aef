#pragma once

namespace ZELWbr3 {

/// The frames with a name.
inline constexpr int zelWebBrowserMain = 0;    ///< the main page and the analyzer page
inline constexpr int zelWebBrowserWork = 1;    ///< list pages and the default page
inline constexpr int zelWebBrowserDetail = 2;  ///< pages about a single item

/// The page types, in the order of the control's registry.
enum PageTypes : int {
  zelWebBrowserPageNone = 0,
  zelWebBrowserPageDefault,
  zelWebBrowserPageMain,
  zelWebBrowserPageHistory,
  zelWebBrowserPageHistoryItem,
  zelWebBrowserPageSysInfos,
  zelWebBrowserPageSysInfo,
  zelWebBrowserPageParameters,
  zelWebBrowserPageParameter,
  zelWebBrowserPageInfoCaches,
  zelWebBrowserPageInfoActivity,
  zelWebBrowserPageDataArea,
  zelWebBrowserPageLogArea,
  zelWebBrowserPageSysDD,
  zelWebBrowserPageSQLTable,
  zelWebBrowserPageSessions,
  zelWebBrowserPageDBAnalyzer,
};

}  // namespace ZELWbr3
