#include "process/process_request.h"

#include "bridge/java/native_frame.h"
#include "bridge/java/pending_exception_keeper.h"

namespace corvane {

void RequestStream::write(std::span<const char> bytes) const {
  // A byte above 127 arrives as a negative int: the stream keeps its low eight bits.
  callVoidMethodIntEach(L"write",
                        {reinterpret_cast<const signed char*>(bytes.data()), bytes.size()});
}

void ProcessRequest::setReturnCode(DWORD code) const {
  callVoidMethodInt(L"setProcessReturnCode", static_cast<jint>(code));
}

RequestStream ProcessRequest::stream(const wchar_t* getter) const {
  return {env_, callObjectMethod(getter, "java/io/PipedOutputStream").get()};
}

void ProcessRequest::closeStreams() const noexcept {
  const PendingExceptionKeeper keeper(env_);
  closeStream(kStandardOutput);
  closeStream(kStandardError);
}

/// A stream that cannot be flushed is closed all the same: somebody may wait for its end.
void ProcessRequest::closeStream(const wchar_t* getter) const noexcept {
  const auto forget = [this] { env_->ExceptionClear(); };
  catchAll(
      [&] {
        const RequestStream ending = stream(getter);
        catchAll([&] { ending.callVoidMethod(L"flush"); }, forget);
        ending.callVoidMethod(L"close");
      },
      forget);
}

}  // namespace corvane
