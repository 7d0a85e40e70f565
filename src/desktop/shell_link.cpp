#include "desktop/shell_link.h"

#include <shlobj.h>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/com_pointer.h"

namespace corvane {

namespace {

/// Fills the object; what is empty is not set. The first failure ends it.
HRESULT fill(const ComPointer<IShellLinkA>& shellLink, const Shortcut& link) {
  HRESULT result = shellLink->SetPath(AnsiText(link.target));
  if (SUCCEEDED(result) && hasText(link.arguments)) {
    result = shellLink->SetArguments(AnsiText(link.arguments));
  }
  if (SUCCEEDED(result) && hasText(link.workingDirectory)) {
    result = shellLink->SetWorkingDirectory(AnsiText(link.workingDirectory));
  }
  if (SUCCEEDED(result) && hasText(link.iconPath)) {
    shellLink->SetIconLocation(AnsiText(link.iconPath), 0);  // a shortcut without its icon will do
  }
  return result;
}

}  // namespace

HRESULT saveShellLink(const wchar_t* file, const Shortcut& link) {
  void* made = nullptr;
  HRESULT result =
      CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, &made);
  if (FAILED(result)) {
    return result;
  }
  const ComPointer shellLink(static_cast<IShellLinkA*>(made));
  result = shellLink->QueryInterface(IID_IPersistFile, &made);
  if (FAILED(result)) {
    return result;
  }
  const ComPointer persistFile(static_cast<IPersistFile*>(made));
  result = fill(shellLink, link);
  return FAILED(result) ? result : persistFile->Save(file, TRUE);
}

}  // namespace corvane
