#pragma once

namespace corvane {

/// What the library itself reads and writes in the registry: the numbers of the roots (see
/// rootFromJava) and the key below which the system keeps what installers have to know.

constexpr int kCurrentUser = 3;
constexpr int kLocalMachine = 4;
constexpr const wchar_t* kCurrentVersion = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion";

}  // namespace corvane
