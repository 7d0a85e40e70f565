#include <jni.h>
#include <windows.h>

#include <string>
#include <vector>

#include "child_process.h"
#include "com_corvane_bench_RequiredPrograms.h"
#include "java_text.h"
#include "required_calls.h"
#include "timed_calls.h"

namespace {

constexpr DWORD kIdleMillis = 10'000;
constexpr DWORD kPauseMillis = 100;
constexpr DWORD kFirstSize = 255;

/// Java's stream, which takes a byte a call.
class Stream {
 public:
  Stream(JNIEnv* env, jobject stream)
      : env_(env), stream_(stream), class_(env->GetObjectClass(stream)) {}

  void write(const char* bytes, DWORD count) const {
    const jmethodID write = method("write", "(I)V");
    for (DWORD i = 0; i < count && env_->ExceptionCheck() == JNI_FALSE; ++i) {
      env_->CallVoidMethod(stream_, write, static_cast<jint>(bytes[i]));
    }
  }
  void end() const {
    env_->CallVoidMethod(stream_, method("flush", "()V"));
    env_->CallVoidMethod(stream_, method("close", "()V"));
  }

 private:
  jmethodID method(const char* name, const char* signature) const {
    return env_->GetMethodID(class_, name, signature);
  }

  JNIEnv* env_;
  jobject stream_;
  jclass class_;
};

bool hasEnded(HANDLE process) {
  return WaitForSingleObject(process, 0) == WAIT_OBJECT_0;
}

/// By looking and sleeping in turn: the ends of the child stay open, so no read meets an end.
void drain(HANDLE process, HANDLE pipe, const Stream& stream) {
  char bytes[kReadSize];
  DWORD count = 0;
  while (PeekNamedPipe(pipe, nullptr, 0, nullptr, &count, nullptr) != FALSE) {
    if (count == 0) {
      if (hasEnded(process)) {
        return;
      }
      Sleep(kPauseMillis);
    } else if (ReadFile(pipe, bytes, sizeof(bytes), &count, nullptr) == FALSE || count == 0) {
      return;
    } else {
      stream.write(bytes, count);
    }
  }
}

DWORD run(const std::string& commandLine, const Stream& output, const Stream& errors) {
  ChildProcess child;
  const DWORD error = child.start(commandLine, true);
  if (error != ERROR_SUCCESS) {
    return error;
  }
  WaitForInputIdle(child.process(), kIdleMillis);
  drain(child.process(), child.output(), output);
  drain(child.process(), child.errors(), errors);
  DWORD code = 0;
  return exitCode(child.process(), code);
}

/// Into a buffer of a fixed size first, and of the right one when the value is longer.
DWORD readVariable(const std::wstring& name, std::wstring& value) {
  DWORD length = kFirstSize;
  do {
    value.resize(length);
    length = GetEnvironmentVariableW(name.c_str(), value.data(), length);
  } while (length > value.size());
  value.resize(length);
  return errorUnless(length != 0);
}

}  // namespace

extern "C" {

JNIEXPORT void JNICALL Java_com_corvane_bench_RequiredPrograms_run(JNIEnv* env,
                                                                   jclass,
                                                                   jstring commandLine,
                                                                   jobject output,
                                                                   jobject errors) {
  const std::wstring wide = textOf(env, commandLine);
  const Stream out(env, output);
  const Stream err(env, errors);
  const DWORD error = run(std::string(wide.begin(), wide.end()), out, err);
  out.end();
  err.end();
  raiseUnlessZero(env, error);
}

JNIEXPORT jstring JNICALL Java_com_corvane_bench_RequiredPrograms_readVariable(JNIEnv* env,
                                                                               jclass,
                                                                               jstring name) {
  askVersion();
  std::wstring value;
  raiseUnlessZero(env, readVariable(textOf(env, name), value));
  return toJava(env, value);
}

JNIEXPORT void JNICALL Java_com_corvane_bench_RequiredPrograms_setVariable(JNIEnv* env,
                                                                           jclass,
                                                                           jstring name,
                                                                           jstring value) {
  askVersion();
  const std::wstring text = textOf(env, name);
  raiseUnlessZero(env,
                  errorUnless(SetEnvironmentVariableW(text.c_str(), textOf(env, value).c_str())));
}

}  // extern "C"
