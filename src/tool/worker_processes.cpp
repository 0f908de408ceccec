#include "tool/worker_processes.h"

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <deque>
#include <exception>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "layout/ending_signals.h"
#include "tool/progress.h"

namespace quorbel {
namespace {

/// Those that run. Signals wait while it changes, and other threads leave them to the main thread.
std::vector<pid_t> workers;

/// Ends all workers, then this program by the same signal.
void endWithWorkers(int number) {
  signal(number, SIG_DFL);
  for (const pid_t worker : workers) kill(worker, SIGTERM);
  for (const pid_t worker : workers) {
    while (waitpid(worker, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  raise(number);  // which acts on return
}

/// While it lives, signals that would end this program end the workers first.
class SignalsEndWorkers {
 public:
  SignalsEndWorkers() {
    struct sigaction action = {};
    action.sa_handler = endWithWorkers;
    for (const int number : endingSignals()) sigaddset(&action.sa_mask, number);
    for (const int number : endingSignals()) {
      struct sigaction& before = m_Before.emplace_back();
      sigaction(number, nullptr, &before);
      if (before.sa_handler == SIG_DFL) sigaction(number, &action, nullptr);
    }
  }
  ~SignalsEndWorkers() { restore(); }
  SignalsEndWorkers(const SignalsEndWorkers&) = delete;
  SignalsEndWorkers& operator=(const SignalsEndWorkers&) = delete;

  void restore() const {
    auto before = m_Before.begin();
    for (const int number : endingSignals()) sigaction(number, &*before++, nullptr);
  }

 private:
  std::vector<struct sigaction> m_Before;  ///< for each of endingSignals()
};

/// A file without a name in which a worker leaves text: unlike a pipe it never keeps it waiting.
class Note {
 public:
  Note() : m_File(memfd_create("quorbel-lattice", MFD_CLOEXEC)) {}
  Note(Note&& other) noexcept : m_File(std::exchange(other.m_File, -1)) {}
  Note& operator=(Note&&) = delete;
  ~Note() {
    if (m_File >= 0) close(m_File);
  }

  int file() const { return m_File; }

  void write(const std::string& text) const {
    std::size_t written = 0;
    while (written < text.size()) {
      const ssize_t count = ::write(m_File, text.data() + written, text.size() - written);
      if (count < 0 && errno != EINTR) return;
      if (count > 0) written += static_cast<std::size_t>(count);
    }
  }

  std::string read() const {
    constexpr std::size_t kStep = 4096;
    std::array<char, kStep> step = {};
    std::string text;
    lseek(m_File, 0, SEEK_SET);
    for (ssize_t count = 1; count > 0;) {
      count = ::read(m_File, step.data(), step.size());
      if (count > 0) text.append(step.data(), static_cast<std::size_t>(count));
    }
    return text;
  }

 private:
  int m_File;
};

using WorkApart = std::function<std::string()>;

/// What is done in a worker.
[[noreturn]] void beWorker(const WorkApart& work, const Note& said, const Note& result) {
  constexpr int kNoResult = 1;
  dup2(said.file(), STDERR_FILENO);
  try {
    result.write(work());
  } catch (const std::exception& exception) {  // such as want of memory
    result.write(exception.what());
  } catch (...) {
    _exit(kNoResult);
  }
  _exit(0);
}

/// Results of which some are still being worked on by processes.
class ResultsOfProcesses : public Results {
 public:
  ResultsOfProcesses(std::size_t jobs, const std::function<bool()>& isWanted)
      : m_Jobs(jobs), m_IsWanted(isWanted) {}
  ~ResultsOfProcesses() override {
    while (!workers.empty()) awaitWorker();
  }
  ResultsOfProcesses(const ResultsOfProcesses&) = delete;
  ResultsOfProcesses& operator=(const ResultsOfProcesses&) = delete;

  bool hand(std::function<void()> action, std::size_t) override {
    m_Waiting.emplace_back().action = std::move(action);
    return doActions();
  }

  bool handApart(const WorkApart& work, std::function<void(std::string)> then) override {
    const std::size_t mostAhead = 8 * m_Jobs;  // with the actions between them
    while (workers.size() >= m_Jobs || (m_Waiting.size() >= mostAhead && !workers.empty())) {
      awaitWorker();
      if (!doActions()) return false;
    }
    Entry& entry = m_Waiting.emplace_back();
    entry.action = [this, &entry, then = std::move(then)] {
      if (!entry.said.empty()) {
        const ProgressLineAway away;
        std::cerr << entry.said << std::flush;
      }
      then(std::move(entry.result));
    };
    while (!start(entry, work)) {
      const int reason = errno;
      if (workers.empty()) {
        entry.result = std::string("no process could be started: ") + std::strerror(reason);
        break;
      }
      awaitWorker();
    }
    return doActions();
  }

  /// Does all that waits.
  void finish() {
    while (doActions() && !m_Waiting.empty()) awaitWorker();
  }

 private:
  struct Entry {
    std::function<void()> action;
    pid_t worker = 0;  ///< that has still to end; 0 for none
    std::vector<Note> notes;
    std::string said;
    std::string result;
  };

  /// Starts a worker for the entry. Returns false with errno set where that is impossible.
  bool start(Entry& entry, const WorkApart& work) {
    std::vector<Note> notes(2);
    if (notes[0].file() < 0 || notes[1].file() < 0) return false;
    const EndingSignalsWait signalsWait;
    const pid_t parent = getpid();
    pid_t worker = 0;
    {
      const ProgressLineAway away;  // whose lock no other thread has then, for ever in the worker
      worker = fork();
    }
    if (worker < 0) return false;
    if (worker == 0) {
      m_Signals.restore();
      prctl(PR_SET_PDEATHSIG, SIGTERM);
      if (getppid() != parent) _exit(1);  // it has ended before that
      workers.clear();
      for (Entry& other : m_Waiting) other.notes.clear();  // whose files would be open here too
      signalsWait.letThrough();
      beWorker(work, notes[0], notes[1]);
    }
    workers.push_back(worker);
    entry.worker = worker;
    entry.notes = std::move(notes);
    return true;
  }

  /// Waits for the end of some worker, and takes what it leaves.
  void awaitWorker() {
    siginfo_t ended = {};
    while (waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT) != 0 && errno == EINTR) {
    }
    const EndingSignalsWait signalsWait;
    int status = 0;
    waitpid(ended.si_pid, &status, 0);
    workers.erase(std::remove(workers.begin(), workers.end(), ended.si_pid), workers.end());
    const auto isIts = [&](const Entry& entry) { return entry.worker == ended.si_pid; };
    const auto entry = std::find_if(m_Waiting.begin(), m_Waiting.end(), isIts);
    if (entry == m_Waiting.end()) return;  // a child of what became this program
    entry->said = entry->notes[0].read();
    entry->result = entry->notes[1].read();
    if (WIFSIGNALED(status))
      entry->result =
          std::string("its process was ended by a signal (") + strsignal(WTERMSIG(status)) + ")";
    else if (WEXITSTATUS(status) != 0)
      entry->result = "its process failed";
    entry->notes.clear();
    entry->worker = 0;
  }

  /// Does what waits for nothing that goes before. Returns whether more is wanted.
  bool doActions() {
    while (m_IsWanted() && !m_Waiting.empty() && m_Waiting.front().worker == 0) {
      m_Waiting.front().action();
      m_Waiting.pop_front();
    }
    return m_IsWanted();
  }

  const std::size_t m_Jobs;
  const std::function<bool()>& m_IsWanted;
  const SignalsEndWorkers m_Signals;
  std::deque<Entry> m_Waiting;  ///< in their order; those in it keep their places in memory
};

}  // namespace

void workInProcesses(std::size_t count, std::size_t jobs,
                     const std::function<void(std::size_t number, Results& results)>& work,
                     const std::function<bool()>& isWanted) {
  signal(SIGCHLD, SIG_DFL);  // ignored, it would hide how a process ended
  ResultsOfProcesses results(jobs, isWanted);
  for (std::size_t number = 0; number < count && isWanted(); ++number) work(number, results);
  results.finish();
}

}  // namespace quorbel
