// What the window plays, recorded by OpenAL Soft's wave writer and compared with the sound file.

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

#include "app/sound_window_fixture.h"
#include "sound/heard_sound.h"

namespace quorbel {
namespace {

/// Runs the current test in a process of its own. Returns its exit status, -1 when a signal ended
/// it.
int runTestAlone() {
  const auto* const test = ::testing::UnitTest::GetInstance()->current_test_info();
  std::string program = "/proc/self/exe";
  std::string filter =
      std::string("--gtest_filter=") + test->test_suite_name() + "." + test->name();
  const pid_t child = fork();
  if (child == 0) {
    char* const arguments[] = {program.data(), filter.data(), nullptr};
    execv(program.c_str(), arguments);
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class SoundHeard : public SoundWindowTest, public ::testing::WithParamInterface<int> {
 protected:
  static constexpr int kFrames = 4000;  // half a second

  int channels() const { return GetParam(); }

  /// Opens a lattice with this sound on a device that records, and carries `test` out. The library
  /// reads its configuration once a process: where other tests run too, all this happens in a
  /// process of its own.
  void record(const Samples& samples, const std::function<void()>& test) {
    if (::testing::UnitTest::GetInstance()->test_to_run_count() > 1) {
      EXPECT_EQ(runTestAlone(), 0);
      return;
    }
    recordWhatIsPlayed();
    openWithSound(samples, channels());
    test();
  }

  void recordWhatIsPlayed() const {
    const std::string settings = folder.write(
        "openal.conf", recorderSettings(pathIn(folder, "heard.wav"), kSampleRate, channels()));
    setenv("ALSOFT_DRIVERS", "wave", 1);
    setenv("ALSOFT_CONF", settings.c_str(), 1);
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"})
      setenv(name, folder.path().c_str(), 1);
  }

  void playToTheEnd() {
    activate("SoundMenuPlay");
    EXPECT_TRUE(window->m_Audio.isPlaying());
    EXPECT_TRUE(waitForEndOfSound());
  }

  /// The recording is these values of the sound and nothing else.
  void expectHeard(const Samples& samples, std::size_t start, std::size_t end) {
    window.reset();  // completes the file
    Recording heard = readRecording("heard.wav");
    EXPECT_EQ(heard.channels, channels());
    EXPECT_EQ(heard.sampleRate, kSampleRate);
    EXPECT_TRUE(takeSound(heard, Samples(samples.begin() + static_cast<std::ptrdiff_t>(start),
                                         samples.begin() + static_cast<std::ptrdiff_t>(end))));
    EXPECT_EQ(restOf(heard), Samples()) << "too much was played";
  }
};

TEST_P(SoundHeard, PlayPlaysTheWholeSound) {
  const Samples samples = testTone(kFrames, channels());
  record(samples, [&] {
    playToTheEnd();
    expectHeard(samples, 0, kFrames);
  });
}

TEST_P(SoundHeard, PlayPlaysTheTimeOfTheSelectedEdge) {
  const Samples samples = testTone(kFrames, channels());
  record(samples, [&] {
    selectEdge(3);  // from 0.5 to 1
    playToTheEnd();
    expectHeard(samples, kFrames / 2, kFrames);
  });
}

TEST_P(SoundHeard, PlayPlaysTheDraggedRange) {
  const Samples samples = testTone(kFrames, channels());
  record(samples, [&] {
    const int width = stripWidth();
    const auto valueAt = [width](int x) {
      return static_cast<std::size_t>(static_cast<double>(x) / width * kFrames);
    };
    const auto evenBefore = [&](int x) {  // a stereo sound has no parts of odd length
      while (valueAt(x) % 2 != 0) --x;
      return x;
    };
    const int to = evenBefore(width * 3 / 5);
    dragOnStrip(to, 0);
    ASSERT_EQ(window->m_SelectedEdges.size(), 2u);
    playToTheEnd();
    expectHeard(samples, 0, valueAt(to));
  });
}

INSTANTIATE_TEST_SUITE_P(Channels, SoundHeard, ::testing::Values(1, 2));

}  // namespace
}  // namespace quorbel
