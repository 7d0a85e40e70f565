#pragma once

// In place of GoogleTest's own class, which needs std::mutex. GoogleTest uses it only to start
// threads in its own tests; here no test starts one.

namespace testing::internal {

class Notification {
 public:
  void Notify() {}
  void WaitForNotification() {}
};

}  // namespace testing::internal
