#include "process/output_reader.h"

#include <algorithm>

namespace corvane {

namespace {

/// Milliseconds between two looks at a pipe that is empty.
constexpr DWORD kPause = 100;
/// And after how many of them the errors no longer wait.
constexpr DWORD kPatience = 1000;
/// In an output that never pauses, the errors are looked at after so many pieces.
constexpr DWORD kPieces = 1000;

/// Takes what comes through a pipe until the child has ended and nothing is left, or the pipe
/// cannot be read. `idle()` is called when there is nothing yet.
template <class Take, class Idle>
void drain(const OutputPipe& pipe, const ChildProcess& child, const Take& take, const Idle& idle) {
  ReadBuffer buffer;
  bool ended = false;
  while (const std::optional<DWORD> available = pipe.available()) {
    if (*available != 0) {
      const std::span<const char> bytes = pipe.read(buffer);
      if (bytes.empty()) {
        return;
      }
      take(bytes);
    } else if (ended) {
      return;
    } else {
      // What it wrote between the look into the pipe and its end is there at the next look.
      ended = child.hasEnded();
      if (!ended) {
        idle();
      }
    }
  }
}

}  // namespace

OutputReader::OutputReader(const ChildProcess& child, const OutputPipes& pipes) noexcept
    : child_(child), pipes_(pipes), patience_(kPatience), pause_(kPause) {}

void OutputReader::drainInto(const ProcessRequest& request) {
  drainOutput(request.standardOutput());
  drainErrors(request.standardError());
}

void OutputReader::drainOutput(const RequestStream& stream) {
  const auto take = [&](std::span<const char> bytes) {
    stream.write(bytes);
    pause_ = kPause;
    if (++pieces_ % kPieces == 0) {
      keepErrors();
    }
  };
  drain(pipes_.output, child_, take, [this] { awaitOutput(); });
}

/// While errors come, the pauses are short: nobody else empties their pipe.
void OutputReader::awaitOutput() {
  if (waited_ >= patience_ && keepErrors()) {
    patience_ = 0;
    pause_ = 0;
  }
  Sleep(pause_);
  waited_ += pause_;
  pause_ = std::clamp(2 * pause_, DWORD{1}, kPause);
}

/// Takes out the errors that stand in their pipe now. Whether there were any.
bool OutputReader::keepErrors() {
  const DWORD available = pipes_.errors.available().value_or(0);
  ReadBuffer buffer;
  DWORD taken = 0;
  while (taken < available) {
    const std::span<const char> bytes = pipes_.errors.read(buffer);
    if (bytes.empty()) {
      break;
    }
    errors_.add(bytes);
    taken += static_cast<DWORD>(bytes.size());
  }
  return taken != 0;
}

void OutputReader::drainErrors(const RequestStream& stream) {
  const auto take = [&](std::span<const char> bytes) { stream.write(bytes); };
  errors_.giveBack(take);
  drain(pipes_.errors, child_, take, [] { Sleep(kPause); });
}

}  // namespace corvane
