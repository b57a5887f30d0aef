#include <gtest/gtest.h>

#include <wx/app.h>
#include <wx/evtloop.h>

namespace {

/// One toolkit for all tests of the process. The tests run inside an event
/// loop, as a program's handlers do.
class TestApp : public wxApp {
 public:
  bool OnInit() override {
    SetExitOnFrameDelete(false);
    return true;
  }
  int OnRun() override {
    wxEventLoop oLoop;
    const wxEventLoopActivator oActivator(&oLoop);
    return RUN_ALL_TESTS();
  }
};

}  // namespace

wxIMPLEMENT_APP_NO_MAIN(TestApp);

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  return wxEntry(argc, argv);
}
