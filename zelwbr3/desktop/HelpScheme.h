#pragma once

#include <string>

typedef struct _WebKitWebContext WebKitWebContext;
typedef struct _WebKitWebView WebKitWebView;

namespace ZELWbr3::Desktop {

struct HelpContent {
  std::string Bytes;
  std::string Type;  // a MIME type
};

/// What a URL of the scheme "mk" shows where sCHMPath is the help file: the
/// object it names, or a page that says why there is none.
HelpContent HelpContentOf(const std::string& sURL, const std::string& sCHMPath);

/// Serves the URLs of compiled help files (see HelpURL.h), scheme "mk", to the
/// views of a context; once for each context. A view gets what is in the help
/// file that it was given, and a page that says why for everything else.
/// A document of this scheme is asked to load nothing but from its file.
void RegisterHelpScheme(WebKitWebContext* oContext);

/// Gives a view the help file that it may show; none when the path is empty.
void GiveHelpFile(WebKitWebView* oView, const std::string& sCHMPath);
/// The path of that file; empty when there is none.
std::string HelpFileOf(WebKitWebView* oView);

}  // namespace ZELWbr3::Desktop
