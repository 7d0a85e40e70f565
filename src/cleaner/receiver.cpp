#include "cleaner/receiver.h"

#include <utility>

#include "bridge/win32/win32_failure.h"

namespace corvane {

namespace {

constexpr const char* kClassName = "corvane_cleaner";
constexpr DWORD kPatienceMilliseconds = 60'000;

struct WindowTraits {
  using Handle = HWND;
  static Handle none() noexcept { return nullptr; }
  static void close(Handle window) noexcept { DestroyWindow(window); }
};

class Receiver {
 public:
  explicit Receiver(const ParentProcess& parent) : parent_(parent), window_(makeWindow()) {
    throwUnless(static_cast<bool>(window_));
    // The window of this thread that is the last from the top gets the order, and the system makes
    // one for input methods, which it may not tell apart from another process.
    SetWindowPos(window_.get(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetWindowLongPtrA(window_.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }

  std::optional<Order> await() {
    const DWORD begin = GetTickCount();
    const HANDLE parent = parent_.handle();
    for (DWORD passed = 0; !order_ && passed < kPatienceMilliseconds;
         passed = GetTickCount() - begin) {
      const DWORD patience = kPatienceMilliseconds - passed;
      if (MsgWaitForMultipleObjects(1, &parent, FALSE, patience, QS_ALLINPUT) !=
          WAIT_OBJECT_0 + 1) {
        break;
      }
      dispatch();
    }
    return std::move(order_);
  }

 private:
  static HWND makeWindow() {
    WNDCLASSA type = {};
    type.lpfnWndProc = onMessage;
    type.hInstance = GetModuleHandleA(nullptr);
    type.lpszClassName = kClassName;
    RegisterClassA(&type);
    return CreateWindowExA(0,
                           kClassName,
                           "",
                           WS_POPUP,
                           0,
                           0,
                           0,
                           0,
                           nullptr,
                           nullptr,
                           type.hInstance,
                           nullptr);
  }

  static void dispatch() {
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;) {
      DispatchMessageA(&message);
    }
  }

  static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    auto* const receiver = reinterpret_cast<Receiver*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message != WM_COPYDATA || receiver == nullptr || second == 0) {
      return DefWindowProcA(window, message, first, second);
    }
    return receiver->takes(reinterpret_cast<HWND>(first),
                           *reinterpret_cast<const COPYDATASTRUCT*>(second));
  }

  /// Nothing may be thrown through the system's own functions, which call this.
  LRESULT takes(HWND sender, const COPYDATASTRUCT& data) noexcept {
    try {
      return !order_ && mayCome(sender) && isOrder(data) ? TRUE : FALSE;
    } catch (...) {
      return FALSE;
    }
  }

  bool mayCome(HWND sender) const noexcept {
    DWORD process = 0;
    GetWindowThreadProcessId(sender, &process);
    return sender == nullptr || process == parent_.id();
  }

  bool isOrder(const COPYDATASTRUCT& data) {
    std::optional<Order> order = orderIn(static_cast<const char*>(data.lpData), data.cbData);
    if (!order || order->process != parent_.id()) {
      return false;
    }
    order_ = std::move(order);
    return true;
  }

  const ParentProcess& parent_;
  std::optional<Order> order_;
  ScopedHandle<WindowTraits> window_;
};

}  // namespace

std::optional<Order> receiveOrder(const ParentProcess& parent) {
  return Receiver(parent).await();
}

}  // namespace corvane
