#include <jni.h>
#include <windows.h>

#include <string>

#include "child_process.h"
#include "com_corvane_bench_BarePrograms.h"
#include "java_text.h"
#include "timed_calls.h"

namespace {

/// Until the child has closed its end.
DWORD drain(HANDLE pipe) {
  char bytes[kReadSize];
  DWORD count = 0;
  while (ReadFile(pipe, bytes, sizeof(bytes), &count, nullptr) != FALSE && count > 0) {
  }
  return GetLastError() == ERROR_BROKEN_PIPE ? ERROR_SUCCESS : GetLastError();
}

DWORD run(const std::string& commandLine) {
  ChildProcess child;
  DWORD error = child.start(commandLine, false);
  if (error == ERROR_SUCCESS) {
    error = drain(child.output());
  }
  if (error == ERROR_SUCCESS) {
    error = drain(child.errors());
  }
  DWORD code = 0;
  return error != ERROR_SUCCESS ? error : exitCode(child.process(), code);
}

DWORD readVariable(const std::wstring& name, std::wstring& value) {
  value.resize(32'767);
  const auto length =
      GetEnvironmentVariableW(name.c_str(), value.data(), static_cast<DWORD>(value.size()));
  value.resize(length);
  return errorUnless(length != 0);
}

}  // namespace

extern "C" {

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BarePrograms_run(JNIEnv* env,
                                                                jclass,
                                                                jstring commandLine,
                                                                jint calls) {
  const std::wstring wide = textOf(env, commandLine);
  const std::string line(wide.begin(), wide.end());  // plain ASCII
  return timed(calls, [&] { return run(line); });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BarePrograms_readVariable(JNIEnv* env,
                                                                         jclass,
                                                                         jstring name,
                                                                         jint calls) {
  const std::wstring text = textOf(env, name);
  std::wstring value;
  return timed(calls, [&] { return readVariable(text, value); });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BarePrograms_setVariable(JNIEnv* env,
                                                                        jclass,
                                                                        jstring name,
                                                                        jstring value,
                                                                        jint calls) {
  const std::wstring text = textOf(env, name);
  const std::wstring to = textOf(env, value);
  return timed(calls,
               [&] { return errorUnless(SetEnvironmentVariableW(text.c_str(), to.c_str())); });
}

}  // extern "C"
