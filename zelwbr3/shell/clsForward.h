#pragma once

#include "zelwbr3/base/Export.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace ZELWbr3 {

/// Forwards an event to a method of an object, for a host that needs a plain
/// object as a document's event handler. The control itself does not use it.
class ZELWBR3_EXPORT clsForward {
 public:
  /// An object whose methods can be called by name.
  class Destination {
   public:
    virtual ~Destination() = default;
    /// Throws what the method throws; std::invalid_argument if it is unknown.
    virtual void CallByName(const std::string& sMethod) = 0;
  };

  void SetDestination(std::shared_ptr<Destination> oInObject, std::string sInMethod) {
    if (oInObject == nullptr)
      throw std::invalid_argument("There is no object whose method " + sInMethod + " could be called");
    m_oObject = std::move(oInObject);
    m_sMethod = std::move(sInMethod);
    m_bArmed = true;
  }

  /// Calls the method if there is a destination.
  void TheDefaultMethod() const {
    if (m_bArmed) m_oObject->CallByName(m_sMethod);
  }
  void operator()() const { TheDefaultMethod(); }

 private:
  std::shared_ptr<Destination> m_oObject;
  std::string m_sMethod;
  bool m_bArmed = false;
};

}  // namespace ZELWbr3
