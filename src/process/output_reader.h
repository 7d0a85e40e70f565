#pragma once

#include "process/child_process.h"
#include "process/kept_bytes.h"
#include "process/output_pipes.h"

namespace corvane {

/// Hands what a child writes to the request's streams, as long as it runs: all of its output, and
/// then all of its errors, never mixed.
///
/// A child that fills the pipe for errors stands still until somebody reads it, and so may one of
/// its threads while another writes on. So when a second was spent waiting for output, the errors
/// that stand in their pipe are taken out and kept for their turn; and from then on at once, for
/// what stood still once does so again. Output that is never waited for lets them out now and then.
class OutputReader {
 public:
  OutputReader(const ChildProcess& child, const OutputPipes& pipes) noexcept;

  /// Throws JavaException when a stream refuses what it is given.
  void drainInto(const ProcessRequest& request);

 private:
  void drainOutput(const RequestStream& stream);
  void drainErrors(const RequestStream& stream);
  void awaitOutput();
  bool keepErrors();

  const ChildProcess& child_;
  const OutputPipes& pipes_;
  KeptBytes errors_;
  DWORD waited_ = 0;
  DWORD pieces_ = 0;
  DWORD patience_;
  DWORD pause_;
};

}  // namespace corvane
