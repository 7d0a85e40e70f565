#include "security/users_and_groups.h"

#include <algorithm>

#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/text.h"
#include "security/network_management.h"

namespace corvane {

namespace {

struct NetBufferTraits {
  using Handle = BYTE*;
  static Handle none() noexcept { return nullptr; }
  void close(Handle buffer) const noexcept { apiBufferFree(buffer); }

  RuntimeFunction<decltype(&NetApiBufferFree)> apiBufferFree;
};

/// A text as the functions take it, which do not change it.
wchar_t* passed(const wchar_t* text) {
  return const_cast<wchar_t*>(text);
}
wchar_t* passed(const WString& text) {
  return passed(text.c_str());
}

template <class Info>
BYTE* asBytes(Info& info) {
  return reinterpret_cast<BYTE*>(&info);
}

void require(const WString& name) {
  if (name.empty()) {
    throw BadAccountArgument();
  }
}

/// Where users and groups are kept, and what is done there. All but the constructor return the
/// system's status.
class Accounts {
 public:
  explicit Accounts(const WString& where) : server_(where) {
    if (!where.empty() && !where.starts_with(L"\\\\")) {
      server_ = controllerOf(where);
      inDomain_ = true;
    }
  }

  NET_API_STATUS addUser(const NewUser& user) const {
    USER_INFO_2 info = {};
    info.usri2_name = passed(user.name);
    info.usri2_password = passed(user.password.get());
    info.usri2_priv = USER_PRIV_USER;
    info.usri2_comment = passed(user.comment);
    info.usri2_flags = UF_SCRIPT | UF_NORMAL_ACCOUNT;  // the first is demanded of every account
    info.usri2_full_name = passed(user.fullName);
    info.usri2_acct_expires = TIMEQ_FOREVER;
    info.usri2_max_storage = USER_MAXSTORAGE_UNLIMITED;
    return net_.userAdd(server(), DWORD{2}, asBytes(info), nullptr);
  }

  NET_API_STATUS deleteUser(const WString& name) const {
    return net_.userDel(server(), name.c_str());
  }

  NET_API_STATUS join(const WString& group, const WString& user) const {
    const NET_API_STATUS status = addMember(group, user);
    const bool isMember = status == ERROR_MEMBER_IN_ALIAS || status == NERR_UserInGroup;
    return isMember ? DWORD{NERR_Success} : status;
  }

  NET_API_STATUS addGroup(const WString& name, const WString& comment) const {
    if (inDomain_) {
      GROUP_INFO_1 info = {passed(name), passed(comment)};
      return net_.groupAdd(server(), DWORD{1}, asBytes(info), nullptr);
    }
    LOCALGROUP_INFO_1 info = {passed(name), passed(comment)};
    return net_.localGroupAdd(server(), DWORD{1}, asBytes(info), nullptr);
  }

  NET_API_STATUS deleteGroup(const WString& name) const {
    const auto& remove = inDomain_ ? net_.groupDel : net_.localGroupDel;
    return remove(server(), name.c_str());
  }

 private:
  const wchar_t* server() const noexcept { return server_.empty() ? nullptr : server_.c_str(); }

  WString controllerOf(const WString& domain) const {
    ScopedHandle<NetBufferTraits> name({net_.apiBufferFree});
    const NET_API_STATUS status = net_.getDcName(nullptr, domain.c_str(), name.receive());
    if (status != NERR_Success) {
      (void)name.release();  // whatever a failure left there
      throw NoController(status);
    }
    // Without a name it would be this machine that is changed, and nobody told.
    WString controller = textOrEmpty(reinterpret_cast<const wchar_t*>(name.get()));
    if (controller.empty()) {
      throw NoController(NERR_DCNotFound);
    }
    return controller;
  }

  NET_API_STATUS addMember(const WString& group, const WString& user) const {
    if (inDomain_) {
      return net_.groupAddUser(server(), group.c_str(), user.c_str());
    }
    LOCALGROUP_MEMBERS_INFO_3 member = {passed(user)};
    return net_.localGroupAddMembers(server(), group.c_str(), DWORD{3}, asBytes(member), DWORD{1});
  }

  NetworkManagement net_;
  WString server_;
  bool inDomain_ = false;
};

}  // namespace

void createUser(const WString& where, const NewUser& user) {
  require(user.name);
  std::for_each(user.groups.begin(), user.groups.end(), require);
  const Accounts accounts(where);
  throwUnlessZero(accounts.addUser(user));
  for (const WString& group : user.groups) {
    if (const NET_API_STATUS status = accounts.join(group, user.name); status != NERR_Success) {
      accounts.deleteUser(user.name);
      throw NotJoined(status);
    }
  }
}

void deleteUser(const WString& where, const WString& name) {
  require(name);
  throwUnlessZero(Accounts(where).deleteUser(name));
}

void createGroup(const WString& where, const WString& name, const WString& comment) {
  require(name);
  throwUnlessZero(Accounts(where).addGroup(name, comment));
}

void deleteGroup(const WString& where, const WString& name) {
  require(name);
  throwUnlessZero(Accounts(where).deleteGroup(name));
}

}  // namespace corvane
