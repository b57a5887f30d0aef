#include "zelwbr3/desktop/WebContext.h"

#include "zelwbr3/desktop/HelpScheme.h"

#include <webkit2/webkit2.h>

namespace ZELWbr3::Desktop {

WebContext::WebContext() : m_oContext(webkit_web_context_new_ephemeral()) {
  // Any other model keeps stale style sheets and scripts of file pages.
  webkit_web_context_set_cache_model(m_oContext, WEBKIT_CACHE_MODEL_DOCUMENT_VIEWER);
  RegisterHelpScheme(m_oContext);
}

WebContext::~WebContext() { g_object_unref(m_oContext); }

}  // namespace ZELWbr3::Desktop
