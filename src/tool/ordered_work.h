#pragma once

// Work on many things at once whose results come one after the other.

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace quorbel {

/// Takes what is to be done with the results of one piece of work: it is done on the program's main
/// thread, in the order in which it was handed over, and the pieces in the order of their numbers.
class Results {
 public:
  virtual ~Results() = default;

  /// Hands over an action that holds some `bytes` of memory; may wait until earlier ones are done.
  /// Returns false when no more are wanted.
  virtual bool hand(std::function<void()> action, std::size_t bytes) = 0;

  /// Has `work` done, maybe in a process of its own (see workInProcesses), and `then` with the text
  /// that it returns as an action of this turn. Returns false when no more are wanted.
  virtual bool handApart(const std::function<std::string()>& work,
                         std::function<void(std::string)> then) {
    return hand([work, then = std::move(then)] { then(work()); }, 0);
  }
};

/// Does `count` pieces of work, `jobs` at a time, each by a call of `work` with its number. With
/// one job, or one piece, all is done on the thread of the caller, where actions are done at once.
/// With more, other threads work, which leave signals to that thread, and wait when the actions
/// that they handed over hold much memory. `isWanted` is asked on the caller's thread before and
/// after actions; once it says no, what is not begun is left out.
void workInOrder(std::size_t count, std::size_t jobs,
                 const std::function<void(std::size_t number, Results& results)>& work,
                 const std::function<bool()>& isWanted);

}  // namespace quorbel
