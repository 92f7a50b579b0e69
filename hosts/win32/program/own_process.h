// Other runs of this program, in processes of their own.
#pragma once

#include <windows.h>

#include "hosts/shared/program_system.h"

namespace orvello {

// The program's own file; empty when the platform does not say.
std::wstring own_program();

// One word of a command line, as programs take it apart again.
std::wstring quoted_word(const std::wstring& word);

class OwnProcesses : public OwnRuns {
 public:
  explicit OwnProcesses(std::wstring program = own_program()) : program_(std::move(program)) {}
  // Looks now and then whether it has ended; null before there is a window's host.
  std::unique_ptr<OwnRun> start(const std::vector<std::string>& words, Ended ended) override;
  void set_loop(ProgramLoop* loop) { loop_ = loop; }

 private:
  std::wstring program_;
  ProgramLoop* loop_ = nullptr;
};

}  // namespace orvello
