#pragma once

namespace corvane {

/// The key below which the system keeps what installers have to know.
constexpr const wchar_t* kCurrentVersion = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion";

/// What the system runs once at its next start: a command in each value, below the machine's root.
constexpr const wchar_t* kRunOnce = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce";

}  // namespace corvane
