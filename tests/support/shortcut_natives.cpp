#include <com_corvane_testing_Shortcut.h>
#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <stdexcept>

#include "java_text.h"

// The native of com.corvane.testing.Shortcut; what it does is said there.

namespace {

void require(HRESULT result) {
  if (FAILED(result)) {
    throw std::runtime_error("the shell does not read the shortcut");
  }
}

jobjectArray fields(JNIEnv* env, IShellLinkW* link) {
  constexpr int kSize = 1024;
  wchar_t texts[4][kSize] = {};
  int icon = 0;
  require(link->GetPath(texts[0], kSize, nullptr, SLGP_RAWPATH));
  require(link->GetArguments(texts[1], kSize));
  require(link->GetWorkingDirectory(texts[2], kSize));
  require(link->GetIconLocation(texts[3], kSize, &icon));
  jobjectArray const array = env->NewObjectArray(4, env->FindClass("java/lang/String"), nullptr);
  for (jsize index = 0; index < 4; ++index) {
    const wchar_t* text = texts[index];
    env->SetObjectArrayElement(
        array,
        index,
        env->NewString(reinterpret_cast<const jchar*>(text), static_cast<jsize>(wcslen(text))));
  }
  return array;
}

}  // namespace

JNIEXPORT jobjectArray JNICALL Java_com_corvane_testing_Shortcut_read(JNIEnv* env,
                                                                      jclass,
                                                                      jstring path) {
  return bed::orThrow(env, [&] {
    require(CoInitialize(nullptr));
    IShellLinkW* link = nullptr;
    IPersistFile* file = nullptr;
    require(CoCreateInstance(CLSID_ShellLink,
                             nullptr,
                             CLSCTX_INPROC_SERVER,
                             IID_IShellLinkW,
                             reinterpret_cast<void**>(&link)));
    require(link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file)));
    require(file->Load(bed::wide(env, path).c_str(), STGM_READ));
    jobjectArray const result = fields(env, link);
    file->Release();
    link->Release();
    CoUninitialize();
    return result;
  });
}
