#pragma once

typedef struct _WebKitWebContext WebKitWebContext;

namespace ZELWbr3::Desktop {

/// What the web views of one control share. It is their own and not the
/// program's default one, whose cache and settings belong to the program.
/// Nothing is kept on disk.
class WebContext {
 public:
  WebContext();
  ~WebContext();
  WebContext(const WebContext&) = delete;
  WebContext& operator=(const WebContext&) = delete;

  WebKitWebContext* Native() const { return m_oContext; }

 private:
  WebKitWebContext* m_oContext;
};

}  // namespace ZELWbr3::Desktop
