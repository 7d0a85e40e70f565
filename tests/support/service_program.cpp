#include <windows.h>

#include <cstdio>
#include <string>

// A service: corvane_service_program RECORD. What it is told stands in the record, a line each, in
// UTF-16: its name and the arguments of its start, then the controls.

namespace {

std::wstring record;
SERVICE_STATUS_HANDLE service = nullptr;

void write(const std::wstring& line) {
  FILE* const file = _wfopen(record.c_str(), L"ab");
  std::fwrite((line + L"\n").c_str(), sizeof(wchar_t), line.size() + 1, file);
  std::fclose(file);
}

/// When it stops, no field is 0 that need not be.
void tell(DWORD state) {
  SERVICE_STATUS status = {SERVICE_WIN32_OWN_PROCESS, state, 0, 0, 0, 3, 4};
  if (state == SERVICE_STOPPED || state == SERVICE_STOP_PENDING) {
    status.dwWin32ExitCode = ERROR_SERVICE_SPECIFIC_ERROR;
    status.dwServiceSpecificExitCode = 7;
  } else {
    status.dwControlsAccepted = SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_PAUSE_CONTINUE;
  }
  SetServiceStatus(service, &status);
}

/// After the control was answered: who has stopped gets no answer through any more.
DWORD WINAPI stop(void*) {
  Sleep(500);
  tell(SERVICE_STOPPED);
  return 0;
}

void WINAPI onControl(DWORD control) {
  write(L"control " + std::to_wstring(control));
  tell(control == SERVICE_CONTROL_STOP    ? SERVICE_STOP_PENDING
       : control == SERVICE_CONTROL_PAUSE ? SERVICE_PAUSED
                                          : SERVICE_RUNNING);
  if (control == SERVICE_CONTROL_STOP) {
    CloseHandle(CreateThread(nullptr, 0, stop, nullptr, 0, nullptr));
  }
}

void WINAPI run(DWORD count, wchar_t** arguments) {
  service = RegisterServiceCtrlHandlerW(arguments[0], onControl);
  for (DWORD index = 0; index < count; ++index) {
    write(arguments[index]);
  }
  tell(SERVICE_RUNNING);
}

}  // namespace

int wmain(int, wchar_t** arguments) {
  record = arguments[1];
  wchar_t any[] = L"";
  const SERVICE_TABLE_ENTRYW services[] = {{any, run}, {nullptr, nullptr}};
  return StartServiceCtrlDispatcherW(services) != FALSE ? 0 : 1;
}
