#include "service/service_control.h"

#include <algorithm>
#include <iterator>

#include "bridge/win32/byte_buffer.h"
#include "service/service_answer.h"

namespace corvane {

namespace {

/// `translate` is GetServiceDisplayNameW or GetServiceKeyNameW, which are alike.
WString translated(const RuntimeFunction<decltype(&GetServiceKeyNameW)>& translate,
                   const wchar_t* name) {
  const ScopedServiceHandle manager = openServiceManager();
  DWORD length = 0;
  if (translate(manager.get(), name, nullptr, &length) == FALSE) {
    if (const DWORD error = GetLastError(); error != ERROR_INSUFFICIENT_BUFFER) {
      throw Win32Failure(error);
    }
  }
  const DWORD size = length + 1;  // the system does not count the terminator
  ByteBuffer buffer;
  buffer.allocate(size, sizeof(wchar_t));
  length = size;
  throwUnless(translate(manager.get(), name, buffer.data<wchar_t>(), &length) != FALSE);
  return size == 0 ? WString() : WString(buffer.data<wchar_t>(), std::min(length, size));
}

}  // namespace

bool serviceExists(SC_HANDLE manager, const wchar_t* name) {
  try {
    // The rights by which it could be removed or given away: what is found can be worked with.
    openService(manager, name, STANDARD_RIGHTS_REQUIRED);
    return true;
  } catch (const Win32Failure& failure) {
    if (failure.code() != ERROR_SERVICE_DOES_NOT_EXIST) {
      throw;
    }
    return false;
  }
}

void deleteService(const wchar_t* name) {
  const ServiceOperation remove(SERVICE_FUNCTION(DeleteService), name, DELETE);
  throwUnless(remove() != FALSE);
}

ServiceStarter::ServiceStarter(const wchar_t* name)
    : start_(SERVICE_FUNCTION(StartServiceW), name, GENERIC_EXECUTE) {}

void ServiceStarter::start(const OptionalTexts& arguments) const {
  std::vector<const wchar_t*> pointers;
  if (arguments) {
    std::transform(arguments->begin(),
                   arguments->end(),
                   std::back_inserter(pointers),
                   [](const OptionalText& text) { return text.get(); });
  }
  const wchar_t** const list = pointers.empty() ? nullptr : pointers.data();
  throwUnless(start_(static_cast<DWORD>(pointers.size()), list) != FALSE);
}

SERVICE_STATUS controlService(const wchar_t* name, DWORD control) {
  // All rights, for each control asks for one of its own and user codes may be anything.
  const ServiceOperation send(SERVICE_FUNCTION(ControlService), name, SERVICE_ALL_ACCESS);
  SERVICE_STATUS status = {};
  throwUnless(send(control, &status) != FALSE);
  return status;
}

SERVICE_STATUS queryServiceStatus(const wchar_t* name) {
  const ServiceOperation query(SERVICE_FUNCTION(QueryServiceStatus), name, kQueryServiceStatus);
  SERVICE_STATUS status = {};
  throwUnless(query(&status) != FALSE);
  return status;
}

WString serviceDisplayName(const wchar_t* keyName) {
  return translated(SERVICE_FUNCTION(GetServiceDisplayNameW), keyName);
}

WString serviceKeyName(const wchar_t* displayName) {
  return translated(SERVICE_FUNCTION(GetServiceKeyNameW), displayName);
}

OptionalTexts enumerateServices(DWORD types, DWORD states) {
  const auto enumerate = SERVICE_FUNCTION(EnumServicesStatusW);
  const ScopedServiceHandle manager = openServiceManager();
  DWORD count = 0;
  DWORD resume = 0;
  const auto answer =
      askServiceManager(ERROR_MORE_DATA, [&](void* buffer, DWORD size, DWORD* needed) {
        auto* services = static_cast<ENUM_SERVICE_STATUSW*>(buffer);
        return enumerate(manager.get(), types, states, services, size, needed, &count, &resume);
      });
  if (!answer) {
    return std::nullopt;
  }
  std::vector<OptionalText> names;
  for (const ENUM_SERVICE_STATUSW& service : answer->records<ENUM_SERVICE_STATUSW>(count)) {
    names.push_back(answer->textAt(service.lpServiceName));
  }
  return names;
}

}  // namespace corvane
