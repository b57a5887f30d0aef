#include "zelwbr3/remote/ErrorPage.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/Document.h"

namespace ZELWbr3::Remote {

const std::string_view ErrorPageStyle =
    ":root{color-scheme:light;font:14px sans-serif;color:#1d2733;background:#fff}"
    ":root[data-theme=dark]{color-scheme:dark;color:#dfe5ec;background:#14181d}"
    "body{margin:3em;max-width:40em}h1{font-size:1.3em;font-weight:600}code{overflow-wrap:anywhere}";

std::string ErrorPage(std::string_view sAsked, std::string_view sReason, std::string_view sStyle) {
  const std::string sOwn = "<style>" + std::string(ErrorPageStyle) + "</style>";
  return "<!DOCTYPE html><html lang=\"en\" " + std::string(Document::ErrorPageMark) +
         "=\"\"><head><meta charset=\"utf-8\"><title>Not shown</title>" +
         (sStyle.empty() ? sOwn : std::string(sStyle)) +
         "</head>"
         "<body><main><h1>This page cannot be shown</h1><p><code>" +
         Text::EscapeHTML(Text::Clean(sAsked)) + "</code></p><p>" + Text::EscapeHTML(Text::Clean(sReason)) +
         "</p></main></body></html>";
}

}  // namespace ZELWbr3::Remote
