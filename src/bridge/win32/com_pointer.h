#pragma once

namespace corvane {

/// The scoped owner of one reference to a COM interface; it is released at the end.
template <class Interface>
class ComPointer {
 public:
  explicit ComPointer(Interface* pointer) noexcept : pointer_(pointer) {}
  ComPointer(const ComPointer&) = delete;
  ComPointer& operator=(const ComPointer&) = delete;
  ~ComPointer() {
    if (pointer_ != nullptr) {
      pointer_->Release();
    }
  }

  Interface* operator->() const noexcept { return pointer_; }

 private:
  Interface* pointer_;
};

}  // namespace corvane
