#pragma once

namespace ZELWbr3 {

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
