#pragma once

#include <vector>

#include "bridge/win32/secret_text.h"
#include "bridge/win32/text.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

// Users and groups of a machine or a domain, for the NT family.
//
// `where` says which: empty is this machine, a name behind two backslashes ("\\SERVER") another
// one, any other name a domain, whose controller is asked for first. A machine has local groups, a
// domain its global ones.
//
// All throw Win32Failure with the system's error; NoController, NoNetworkManagement (see
// network_management.h) and BadAccountArgument before anything is done.

/// A name that must be there is empty.
struct BadAccountArgument {};

/// The controller of the domain cannot be found.
class NoController : public Win32Failure {
 public:
  using Win32Failure::Win32Failure;
};

/// A new user could not join one of the groups, and was deleted again if that could be.
class NotJoined : public Win32Failure {
 public:
  using Win32Failure::Win32Failure;
};

struct NewUser {
  WString name;
  SecretText password;
  WString fullName;
  WString comment;
  std::vector<WString> groups;
};

/// Makes an ordinary user, who never expires, and joins the groups in their order; one that the
/// user is a member of already, as of a domain's group for all users, is joined. Throws NotJoined.
/// Win32: NetUserAdd, NetLocalGroupAddMembers, NetGroupAddUser, NetUserDel.
void createUser(const WString& where, const NewUser& user);

/// Win32: NetUserDel.
void deleteUser(const WString& where, const WString& name);

/// Win32: NetLocalGroupAdd, NetGroupAdd.
void createGroup(const WString& where, const WString& name, const WString& comment);

/// Win32: NetLocalGroupDel, NetGroupDel.
void deleteGroup(const WString& where, const WString& name);

}  // namespace corvane
