#pragma once

#include <windows.h>

#include "bridge/win32/scoped_handle.h"

namespace corvane {

struct WindowStationTraits {
  using Handle = HWINSTA;
  static Handle none() noexcept { return nullptr; }
  static void close(Handle station) noexcept { CloseWindowStation(station); }
};

struct DesktopTraits {
  using Handle = HDESK;
  static Handle none() noexcept { return nullptr; }
  static void close(Handle desktop) noexcept { CloseDesktop(desktop); }
};

/// The desktop that the person sees, "default" in the window station "winsta0", with the right to
/// change who may use it. Throws Win32Failure.
///
/// A desktop is opened in the process's window station, which is another one for a moment; at the
/// end of the scope it is set once more to what it was, whatever happened.
class InteractiveDesktop {
 public:
  InteractiveDesktop();
  InteractiveDesktop(const InteractiveDesktop&) = delete;
  InteractiveDesktop& operator=(const InteractiveDesktop&) = delete;

  /// Lets the owner of the SID use both. The entries stay: as long as one program of that logon
  /// runs, and nobody knows for how long, it must be able to show its windows.
  void grant(PSID sid) const;

 private:
  struct RestoringTraits {
    using Handle = HWINSTA;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle station) noexcept { SetProcessWindowStation(station); }
  };

  // The process gets its station back first.
  ScopedHandle<DesktopTraits> desktop_;
  ScopedHandle<WindowStationTraits> station_;
  ScopedHandle<RestoringTraits> original_;
};

}  // namespace corvane
