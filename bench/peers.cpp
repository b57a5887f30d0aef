// Figures of a grid that runs in a page by itself, in a bare browser: its page says
// how it is given rows and told what to do, and peers.js measures it. One line for
// the table in the documentation.

#include "bench/Processes.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

#include <webkit2/webkit2.h>

namespace {

/// A window with a browser and nothing else.
class BareWindow {
 public:
  explicit BareWindow(const std::string& sURL) {
    GtkWidget* oFrame = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_default_size(GTK_WINDOW(oFrame), 1000, 800);
    m_oView = WEBKIT_WEB_VIEW(webkit_web_view_new());
    WebKitSettings* oSettings = webkit_web_view_get_settings(m_oView);
    webkit_settings_set_allow_file_access_from_file_urls(oSettings, TRUE);  // for scripts that are modules
    webkit_settings_set_hardware_acceleration_policy(oSettings, WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    gtk_container_add(GTK_CONTAINER(oFrame), GTK_WIDGET(m_oView));
    gtk_widget_show_all(oFrame);
    bool bLoaded = false;
    const auto OnChange = +[](WebKitWebView*, WebKitLoadEvent eEvent, gpointer pLoaded) {
      if (eEvent == WEBKIT_LOAD_FINISHED) *static_cast<bool*>(pLoaded) = true;
    };
    const auto iHandler = g_signal_connect(m_oView, "load-changed", G_CALLBACK(OnChange), &bLoaded);
    webkit_web_view_load_uri(m_oView, sURL.c_str());
    WaitFor(bLoaded);
    g_signal_handler_disconnect(m_oView, iHandler);
  }

  /// The number that a script's promise is kept with.
  double Number(const std::string& sScript) {
    struct Answer {
      bool Done = false;
      double Value = 0;
      std::string Error;
    } oAnswer;
    const auto OnDone = +[](GObject* oView, GAsyncResult* oResult, gpointer pAnswer) {
      auto& oAnswer = *static_cast<Answer*>(pAnswer);
      oAnswer.Done = true;
      GError* oError = nullptr;
      JSCValue* oValue =
          webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(oView), oResult, &oError);
      if (oError != nullptr) {
        oAnswer.Error = oError->message;
        g_error_free(oError);
      } else {
        oAnswer.Value = jsc_value_to_double(oValue);
        g_object_unref(oValue);
      }
    };
    webkit_web_view_call_async_javascript_function(m_oView, sScript.c_str(), -1, nullptr, nullptr, nullptr, nullptr,
                                                   OnDone, &oAnswer);
    WaitFor(oAnswer.Done);
    if (!oAnswer.Error.empty()) throw std::runtime_error(oAnswer.Error);
    return oAnswer.Value;
  }

 private:
  static void WaitFor(const bool& bDone) {
    while (!bDone) g_main_context_iteration(nullptr, TRUE);
  }

  WebKitWebView* m_oView;
};

void Measure(const std::string& sFolder, const std::string& sGrid, int iRows) {
  const auto oPage = std::filesystem::absolute(sFolder) / (sGrid + ".htm");
  if (!std::filesystem::exists(oPage)) throw std::runtime_error("There is no page " + oPage.string());
  BareWindow oWindow("file://" + oPage.string());
  const auto Step = [&](const char* sStep) {
    return oWindow.Number("return Steps." + std::string(sStep) + "(" + std::to_string(iRows) + ")");
  };
  const auto Cell = [](double dValue) {
    if (std::isnan(dValue))
      std::printf(" - |");
    else
      std::printf(" %.0f |", dValue);
    std::fflush(stdout);
  };
  std::printf("| %s | %d |", sGrid.c_str(), iRows);
  Cell(Step("show"));
  Cell(ZELWbr3::Bench::MegabytesUsed());
  for (const char* sStep : {"jump", "filter", "sortNumbers", "sortTexts"}) Cell(Step(sStep));
  Cell(ZELWbr3::Bench::MegabytesUsed());
  std::printf("\n");
}

}  // namespace

int main(int argc, char** argv) {
  std::string sFolder;
  std::string sGrid;
  int iRows = 100'000;
  CLI::App oArguments("Measures a grid that runs in a page by itself.", "bench-peers");
  oArguments.add_option("FOLDER", sFolder, "Folder with the grids' pages")->required();
  oArguments.add_option("GRID", sGrid, "The grid: the name of its page")->required();
  oArguments.add_option("--rows", iRows, "Rows")->check(CLI::Range(1000, 2'000'000))->capture_default_str();
  CLI11_PARSE(oArguments, argc, argv);
  gtk_init(nullptr, nullptr);
  try {
    Measure(sFolder, sGrid, iRows);
  } catch (const std::exception& oError) {
    std::fprintf(stderr, "bench-peers: %s: %s\n", sGrid.c_str(), oError.what());
    return 1;
  }
  return 0;
}
