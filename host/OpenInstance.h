#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/recorded/objects/Call.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZELWbr3::Host {

/// A server wants a password: none is given, or another one than this.
class PasswordNeeded : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Opens the instance that a program's argument names: "recorded:FILE",
/// "sqlite:FILE", "postgresql://…" in the form of libpq, or a file alone, whose
/// first bytes tell what it is. Throws std::runtime_error, which names the
/// instance and what is wrong with it, PasswordNeeded, or std::invalid_argument
/// for an argument of another form. oObserver is told of the operations that are
/// called and change the instance; a recording tells of the others, too.
/// sPassword is for a server whose address has none.
std::shared_ptr<ZELLib3::Database> OpenInstance(const std::string& sInstance, Recorded::CallObserver oObserver = {},
                                                const std::string& sPassword = {});

/// The argument as it may be shown: without a password.
std::string ShownInstance(const std::string& sInstance);
/// Makes the passwords in a program's arguments unreadable for those who list the
/// processes. The arguments must have been taken over before.
void HidePasswords(int argc, char** argv);

/// The files that such an instance consists of, whether they exist or not.
/// Throws std::invalid_argument as OpenInstance.
std::vector<std::string> FilesOf(const std::string& sInstance);

/// The argument for the sample database, which is made when it is not there
/// yet.
std::string SampleInstance();

}  // namespace ZELWbr3::Host
