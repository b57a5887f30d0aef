#include <gtest/gtest.h>

#include <wx/app.h>
#include <wx/evtloop.h>

/// One toolkit for all tests of the process. They run inside an event loop, as
/// a program's handlers do.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  wxApp::SetInstance(new wxApp);
  if (!wxEntryStart(argc, argv)) return 1;
  wxTheApp->SetExitOnFrameDelete(false);
  wxEventLoop oLoop;
  const wxEventLoopActivator oActivator(&oLoop);
  return RUN_ALL_TESTS();
}
