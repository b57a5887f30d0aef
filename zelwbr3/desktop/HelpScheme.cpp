#include "zelwbr3/desktop/HelpScheme.h"

#include "zelwbr3/chm/CompiledHelp.h"
#include "zelwbr3/desktop/HelpURL.h"
#include "zelwbr3/remote/ErrorPage.h"
#include "zelwbr3/remote/FileType.h"

#include <webkit2/webkit2.h>

namespace ZELWbr3::Desktop {

namespace {

constexpr char Property[] = "zelwbr3-help-file";

constexpr char ContentPolicy[] =
    "default-src 'none'; style-src mk: 'unsafe-inline'; img-src mk: data:; font-src mk: data:; "
    "base-uri 'none'; form-action 'none'";

/// After a document type, which must stay first. Scripts are disabled in the
/// view itself, see WebView::HelpFile.
void AddPolicy(std::string& sHTML) {
  std::size_t iPlace = 0;
  if (g_ascii_strncasecmp(sHTML.c_str(), "<!doctype", 9) == 0) {
    const auto iEnd = sHTML.find('>');
    if (iEnd != std::string::npos) iPlace = iEnd + 1;
  }
  sHTML.insert(iPlace, std::string("<meta http-equiv=\"Content-Security-Policy\" content=\"") + ContentPolicy + "\">");
}

/// Goes on to the form of the URL that relative URLs work with.
std::string Forward(const std::string& sURL) {
  return "<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"utf-8\"><title>Help</title>"
         "<meta http-equiv=\"refresh\" content=\"0;url=" +
         sURL + "\"></head><body></body></html>";
}

void Serve(WebKitURISchemeRequest* oRequest, gpointer) {
  const HelpContent oContent = HelpContentOf(webkit_uri_scheme_request_get_uri(oRequest),
                                             HelpFileOf(webkit_uri_scheme_request_get_web_view(oRequest)));
  const auto iSize = oContent.Bytes.size();
  GBytes* oBytes = g_bytes_new(oContent.Bytes.data(), iSize);
  GInputStream* oStream = g_memory_input_stream_new_from_bytes(oBytes);
  WebKitURISchemeResponse* oResponse = webkit_uri_scheme_response_new(oStream, static_cast<gint64>(iSize));
  webkit_uri_scheme_response_set_content_type(oResponse, oContent.Type.c_str());
  webkit_uri_scheme_request_finish_with_response(oRequest, oResponse);
  g_object_unref(oResponse);
  g_object_unref(oStream);
  g_bytes_unref(oBytes);
}

}  // namespace

HelpContent HelpContentOf(const std::string& sURL, const std::string& sCHMPath) {
  const auto sObject = ObjectOf(sURL, sCHMPath);
  if (sCHMPath.empty() || !sObject) {
    return {Remote::ErrorPage(sURL, "It is not in the help file that this window shows."), "text/html"};
  }
  try {
    std::string sBytes = CHM::CompiledHelp::Read(sCHMPath, *sObject);
    if (IsUsualHelpURL(sURL)) return {Forward(HelpURL(sCHMPath, *sObject)), "text/html"};
    const std::string sType = Remote::FileType(*sObject);
    if (sType == "text/html") AddPolicy(sBytes);
    return {std::move(sBytes), sType};
  } catch (const CHM::HelpError& oError) {
    return {Remote::ErrorPage(*sObject, oError.what()), "text/html"};
  }
}

void RegisterHelpScheme(WebKitWebContext* oContext) {
  webkit_web_context_register_uri_scheme(oContext, "mk", Serve, nullptr, nullptr);
}

void GiveHelpFile(WebKitWebView* oView, const std::string& sCHMPath) {
  g_object_set_data_full(G_OBJECT(oView), Property, g_strdup(sCHMPath.c_str()), g_free);
}

std::string HelpFileOf(WebKitWebView* oView) {
  const void* pPath = oView == nullptr ? nullptr : g_object_get_data(G_OBJECT(oView), Property);
  return pPath == nullptr ? std::string() : static_cast<const char*>(pPath);
}

}  // namespace ZELWbr3::Desktop
