#include "process/interactive_desktop.h"

#include "bridge/win32/win32_failure.h"
#include "process/access_grant.h"

namespace corvane {

namespace {

constexpr ACCESS_MASK kChangeAccess = READ_CONTROL | WRITE_DAC;

}  // namespace

InteractiveDesktop::InteractiveDesktop() : original_(GetProcessWindowStation()) {
  throwUnless(static_cast<bool>(original_));
  *station_.receive() = OpenWindowStationA("winsta0", FALSE, kChangeAccess);
  throwUnless(static_cast<bool>(station_));
  throwUnless(SetProcessWindowStation(station_.get()) != FALSE);
  *desktop_.receive() =
      OpenDesktopA("default", 0, FALSE, kChangeAccess | DESKTOP_WRITEOBJECTS | DESKTOP_READOBJECTS);
  throwUnless(static_cast<bool>(desktop_));
  throwUnless(SetProcessWindowStation(original_.get()) != FALSE);
}

void InteractiveDesktop::grant(PSID sid) const {
  grantWindowStation(station_.get(), sid);
  grantDesktop(desktop_.get(), sid);
}

}  // namespace corvane
