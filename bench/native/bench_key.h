#pragma once

// What the registry rows work on; RegistryRows.java makes it before the rounds.

constexpr wchar_t kBenchKey[] = L"Software\\Corvane Bench";
constexpr wchar_t kBenchList[] = L"Software\\Corvane Bench\\List";
constexpr unsigned kBenchListLength = 100;
constexpr wchar_t kBenchText[] = L"C:\\Program Files\\Harbour Notes";
constexpr unsigned kBenchByteLength = 4096;
