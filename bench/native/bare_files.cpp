#include <jni.h>
#include <windows.h>

#include <string>
#include <vector>

#include "com_corvane_bench_BareFiles.h"
#include "java_text.h"
#include "timed_calls.h"

namespace {

using Paths = std::vector<std::wstring>;

Paths textsOf(JNIEnv* env, jobjectArray texts) {
  Paths copies;
  for (jsize i = 0; i < env->GetArrayLength(texts); ++i) {
    const auto text = static_cast<jstring>(env->GetObjectArrayElement(texts, i));
    copies.push_back(textOf(env, text));
    env->DeleteLocalRef(text);
  }
  return copies;
}

DWORD copyAll(const Paths& sources, const Paths& targets) {
  DWORD error = ERROR_SUCCESS;
  for (size_t i = 0; error == ERROR_SUCCESS && i < sources.size(); ++i) {
    error = errorUnless(CopyFileW(sources[i].c_str(), targets[i].c_str(), FALSE));
  }
  return error;
}

DWORD deleteAll(const Paths& files) {
  DWORD error = ERROR_SUCCESS;
  for (size_t i = 0; error == ERROR_SUCCESS && i < files.size(); ++i) {
    error = errorUnless(DeleteFileW(files[i].c_str()));
  }
  return error;
}

DWORD deleteTree(const std::wstring& directory);

DWORD deleteEntry(const std::wstring& prefix, const WIN32_FIND_DATAW& found) {
  const std::wstring name = found.cFileName;
  if (name == L"." || name == L"..") {
    return ERROR_SUCCESS;
  }
  const bool isDirectory = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  const std::wstring path = prefix + name;
  return isDirectory ? deleteTree(path) : errorUnless(DeleteFileW(path.c_str()));
}

DWORD deleteTree(const std::wstring& directory) {
  const std::wstring prefix = directory + L"\\";
  WIN32_FIND_DATAW found;
  HANDLE search = FindFirstFileW((prefix + L"*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    return GetLastError();
  }
  DWORD error = ERROR_SUCCESS;
  do {
    error = deleteEntry(prefix, found);
  } while (error == ERROR_SUCCESS && FindNextFileW(search, &found) != FALSE);
  FindClose(search);
  return error == ERROR_SUCCESS ? errorUnless(RemoveDirectoryW(directory.c_str())) : error;
}

FILETIME fileTimeOf(jlong time) {
  const auto bits = static_cast<ULONGLONG>(time);
  return {static_cast<DWORD>(bits), static_cast<DWORD>(bits >> 32)};
}

DWORD setTimes(const std::wstring& path, const FILETIME& time) {
  HANDLE file = CreateFileW(path.c_str(),
                            FILE_WRITE_ATTRIBUTES,
                            FILE_SHARE_READ | FILE_SHARE_WRITE,
                            nullptr,
                            OPEN_EXISTING,
                            0,
                            nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return GetLastError();
  }
  const DWORD error = errorUnless(SetFileTime(file, &time, &time, &time));
  CloseHandle(file);
  return error;
}

DWORD readAttributes(const std::wstring& path) {
  return errorUnless(GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES);
}

bool makeFile(const std::wstring& path, const std::string& content) {
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return false;
  }
  const auto size = static_cast<DWORD>(content.size());
  DWORD written = 0;
  const bool done =
      content.empty() || WriteFile(file, content.data(), size, &written, nullptr) != FALSE;
  CloseHandle(file);
  return done;
}

}  // namespace

extern "C" {

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareFiles_copyAll(JNIEnv* env,
                                                                 jclass,
                                                                 jobjectArray sources,
                                                                 jobjectArray targets) {
  const Paths from = textsOf(env, sources);
  const Paths to = textsOf(env, targets);
  return timed(1, [&] { return copyAll(from, to); });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareFiles_deleteAll(JNIEnv* env,
                                                                   jclass,
                                                                   jobjectArray files) {
  const Paths paths = textsOf(env, files);
  return timed(1, [&] { return deleteAll(paths); });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareFiles_deleteTree(JNIEnv* env,
                                                                    jclass,
                                                                    jstring directory) {
  const std::wstring path = textOf(env, directory);
  return timed(1, [&] { return deleteTree(path); });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareFiles_setTimes(JNIEnv* env,
                                                                  jclass,
                                                                  jstring file,
                                                                  jlong time,
                                                                  jint calls) {
  const std::wstring path = textOf(env, file);
  const FILETIME fileTime = fileTimeOf(time);
  return timed(calls, [&] { return setTimes(path, fileTime); });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareFiles_readAttributes(JNIEnv* env,
                                                                        jclass,
                                                                        jstring file,
                                                                        jint calls) {
  const std::wstring path = textOf(env, file);
  return timed(calls, [&] { return readAttributes(path); });
}

JNIEXPORT jboolean JNICALL Java_com_corvane_bench_BareFiles_makeFiles(JNIEnv* env,
                                                                      jclass,
                                                                      jobjectArray files,
                                                                      jint size) {
  const std::string content(static_cast<size_t>(size), 'x');
  for (const std::wstring& path : textsOf(env, files)) {
    if (!makeFile(path, content)) {
      return JNI_FALSE;
    }
  }
  return JNI_TRUE;
}

}  // extern "C"
