#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "functions.h"

namespace bed {

/// The books over everything that the library opened since the last clear.
class Accounts {
 public:
  void clear() { *this = Accounts(); }

  /// More local references at once than JNI promises are a violation.
  void open(std::string_view account, uint64_t item, const std::string& function);
  /// Closing what is not open is a violation.
  void close(std::string_view account, uint64_t item, const std::string& function);
  /// Closes whatever is open of this kind, as the JVM does with local references.
  void closeAll(std::string_view account);

  /// What is open and should not be, in words.
  std::vector<std::string> unbalanced() const;
  /// How many things are open that the library promises to leave open.
  size_t leftOpen() const;

  struct Origin {
    std::string function;
    std::string native;
  };

 private:
  /// What is opened twice is to be closed twice.
  std::multimap<std::pair<std::string_view, uint64_t>, Origin> items_;
};

Accounts& accounts();

}  // namespace bed
