#pragma once

// All pages of the control, for a host that uses more than their Show.

#include "zelwbr3/framework/PageDefault.h"
#include "zelwbr3/pages/analyzer/PageDBAnalyzer.h"
#include "zelwbr3/pages/config/PageParameter.h"
#include "zelwbr3/pages/config/PageParameters.h"
#include "zelwbr3/pages/history/PageHistory.h"
#include "zelwbr3/pages/history/PageHistoryItem.h"
#include "zelwbr3/pages/main/PageMain.h"
#include "zelwbr3/pages/monitor/PageInfoActivity.h"
#include "zelwbr3/pages/monitor/PageInfoCaches.h"
#include "zelwbr3/pages/monitor/PageSQLTable.h"
#include "zelwbr3/pages/monitor/PageSessions.h"
#include "zelwbr3/pages/monitor/PageSysDD.h"
#include "zelwbr3/pages/monitor/PageSysInfo.h"
#include "zelwbr3/pages/monitor/PageSysInfos.h"
#include "zelwbr3/pages/storage/PageDataArea.h"
#include "zelwbr3/pages/storage/PageLogArea.h"
