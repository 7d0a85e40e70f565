#include "process/kept_bytes.h"

#include <gtest/gtest.h>

#include <string>

using namespace corvane;

namespace {

TEST(KeptBytes, GiveBackInTheirOrderWhatTheMemoryShouldNotHold) {
  KeptBytes kept;
  std::string all;
  for (int number = 0; number < 40'000; ++number) {
    const std::string piece = std::to_string(number) + std::string(1000, ' ');
    kept.add(piece);
    all += piece;
  }
  std::string given;
  kept.giveBack([&](std::span<const char> piece) { given.append(piece.begin(), piece.end()); });
  EXPECT_TRUE(given == all);
}

}  // namespace
