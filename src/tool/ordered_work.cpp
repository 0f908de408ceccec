#include "tool/ordered_work.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "layout/ending_signals.h"

namespace quorbel {
namespace {

/// Results that are dealt with at once.
class DirectResults : public Results {
 public:
  explicit DirectResults(const std::function<bool()>& isWanted) : m_IsWanted(isWanted) {}

  bool hand(std::function<void()> action, std::size_t) override {
    action();
    return m_IsWanted();
  }

 private:
  const std::function<bool()>& m_IsWanted;
};

/// The pieces of work that threads have begun, and their results that wait for their turn.
class Workshop {
 public:
  Workshop(std::size_t count, std::size_t jobs) : m_Pieces(count), m_MostAhead(4 * jobs) {}

  /// The number of the next piece to begin; none when there is none, or none is wanted any more.
  /// Waits while too many results wait.
  std::optional<std::size_t> begin() {
    std::unique_lock<std::mutex> lock(m_Mutex);
    m_Changed.wait(lock, [this] { return m_IsOver || m_Next < m_Turn + m_MostAhead; });
    if (m_IsOver || m_Next == m_Pieces.size()) return std::nullopt;
    return m_Next++;
  }

  bool hand(std::size_t number, std::function<void()> action, std::size_t bytes) {
    constexpr std::size_t kMuch = std::size_t{1} << 22u;
    std::unique_lock<std::mutex> lock(m_Mutex);
    Piece& piece = m_Pieces[number];
    m_Changed.wait(lock, [&] { return m_IsOver || piece.bytes == 0 || piece.bytes < kMuch; });
    if (m_IsOver) return false;
    piece.actions.push_back({std::move(action), bytes});
    piece.bytes += bytes;
    m_Changed.notify_all();
    return true;
  }

  void end(std::size_t number) {
    const std::lock_guard<std::mutex> lock(m_Mutex);
    m_Pieces[number].isDone = true;
    m_Changed.notify_all();
  }

  /// Does all actions in their order.
  void doActions(const std::function<bool()>& isWanted) {
    while (const std::optional<Action> action = take()) {
      if (isWanted()) action->what();
      if (!isWanted()) finish();
    }
  }

  /// Lets no more be begun or handed over.
  void finish() {
    const std::lock_guard<std::mutex> lock(m_Mutex);
    m_IsOver = true;
    m_Changed.notify_all();
  }

 private:
  struct Action {
    std::function<void()> what;
    std::size_t bytes;
  };
  struct Piece {
    std::deque<Action> actions;
    std::size_t bytes = 0;
    bool isDone = false;
  };

  /// Waits for the action whose turn it is; none at the end.
  std::optional<Action> take() {
    std::unique_lock<std::mutex> lock(m_Mutex);
    for (; m_Turn < m_Pieces.size(); ++m_Turn, m_Changed.notify_all()) {
      Piece& piece = m_Pieces[m_Turn];
      m_Changed.wait(lock, [&] { return m_IsOver || piece.isDone || !piece.actions.empty(); });
      if (m_IsOver) return std::nullopt;
      if (piece.actions.empty()) continue;
      std::optional<Action> action = std::move(piece.actions.front());
      piece.actions.pop_front();
      piece.bytes -= action->bytes;
      m_Changed.notify_all();
      return action;
    }
    return std::nullopt;
  }

  std::mutex m_Mutex;
  std::condition_variable m_Changed;
  std::vector<Piece> m_Pieces;
  const std::size_t m_MostAhead;
  std::size_t m_Next = 0;  ///< the first piece that nobody has begun
  std::size_t m_Turn = 0;  ///< the piece whose results are dealt with
  bool m_IsOver = false;
};

/// The results of one piece in a workshop.
class QueuedResults : public Results {
 public:
  QueuedResults(Workshop& workshop, std::size_t number) : m_Workshop(workshop), m_Number(number) {}

  bool hand(std::function<void()> action, std::size_t bytes) override {
    return m_Workshop.hand(m_Number, std::move(action), bytes);
  }

 private:
  Workshop& m_Workshop;
  const std::size_t m_Number;
};

}  // namespace

void workInOrder(std::size_t count, std::size_t jobs,
                 const std::function<void(std::size_t number, Results& results)>& work,
                 const std::function<bool()>& isWanted) {
  jobs = std::min(jobs, count);
  if (jobs <= 1) {
    DirectResults results(isWanted);
    for (std::size_t number = 0; number < count && isWanted(); ++number) work(number, results);
    return;
  }
  Workshop workshop(count, jobs);
  const auto workOn = [&] {
    while (const std::optional<std::size_t> number = workshop.begin()) {
      QueuedResults results(workshop, *number);
      work(*number, results);
      workshop.end(*number);
    }
  };
  std::vector<std::thread> threads;
  {
    const EndingSignalsWait signalsWait;  // which new threads inherit: signals are the caller's
    try {
      while (threads.size() < jobs) threads.emplace_back(workOn);
    } catch (const std::system_error&) {  // as many as the system has room for
      if (threads.empty()) throw;
    }
  }
  workshop.doActions(isWanted);
  workshop.finish();
  for (std::thread& thread : threads) thread.join();
}

}  // namespace quorbel
