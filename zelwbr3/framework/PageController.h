#pragma once

// What the source file of a page controller uses: the instance, the document, the
// control, and what writes into page files. The header of a page needs DataPage.h
// or TabbedPage.h only.

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/FrontBoxes.h"
#include "zelwbr3/framework/Given.h"
#include "zelwbr3/framework/PageSite.h"
#include "zelwbr3/framework/ZELHTMLForm.h"
#include "zelwbr3/framework/clsSize.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/platform/FCommandlist.h"
#include "zelwbr3/platform/Platform.h"
#include "zelwbr3/platform/UserLocale.h"
