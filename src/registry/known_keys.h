#pragma once

namespace corvane {

/// The key below which the system keeps what installers have to know.
constexpr const wchar_t* kCurrentVersion = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion";

}  // namespace corvane
