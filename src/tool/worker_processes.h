#pragma once

// Work in processes of its own.

#include <cstddef>
#include <functional>

#include "tool/ordered_work.h"

namespace quorbel {

/// Does `count` pieces of work as workInOrder does with one job, but what they hand over to be done
/// apart is done in processes of its own, up to `jobs` at a time, each with a copy of all that
/// there is when it is handed over; there may be no other thread that changes any of that. What a
/// process says on standard error is passed on when its turn comes. A signal that ends this program
/// ends the processes before, which may tidy up; SIGKILL, too, ends them.
void workInProcesses(std::size_t count, std::size_t jobs,
                     const std::function<void(std::size_t number, Results& results)>& work,
                     const std::function<bool()>& isWanted);

}  // namespace quorbel
