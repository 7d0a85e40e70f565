#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bed {

/// A call as a person reads it: the name and the arguments, with a tab before each. `signature` has
/// a letter for each argument, up to the last that is shown:
///
///     -  not shown                          p  a pointer: 0 or "&"
///     t  text in the letters of the name    u  wide text, whatever the name
///     n  32-bit number                      w  number of the size of a pointer, or a handle
///     y  8-bit number                       k  registry key: HKCU and its like, or "a key"
///     i  where a 32-bit number stands       q  where a 64-bit number stands
///     d  bytes; the next argument is their number       6  as many bytes as the digit
///     o  a security descriptor: whose it makes something
///     c  what is copied to another process: a number, its size and its text
///     s  how a program is started: desktop, size, flags, window, and its three handles
std::wstring showCall(std::string_view name, std::string_view signature, const uint64_t* words);

}  // namespace bed
