// Shows the main page of an empty database file and fails unless it is online.

#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"
#include "zelwbr3/shell/Browser.h"
#include "zelwbr3/shell/Pages.h"

#include <fstream>
#include <iostream>

int main() {
  std::ofstream("installed.db");
  ZELWbr3::Headless::HeadlessPlatform oPlatform;
  ZELWbr3::Browser oBrowser(oPlatform);
  oBrowser.HTMLPath(ZELWBR3_HTML);
  oBrowser.PageMain()->Show(ZELWbr3::SQLite::OpenDatabase("installed.db"));
  const std::string sState = oBrowser.VisibleDocument()->all().item("txtState")->innerText();
  std::cout << sState << '\n';
  return sState == "Online" ? 0 : 1;
}
