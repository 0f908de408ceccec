#pragma once

#include <AL/al.h>

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

// A stand-in for OpenAL: a program that links it calls these functions instead of the library's.
// Every call but the questions for the source's state and for errors is written down.

namespace quorbel {

struct FakeUpload {
  ALenum format = 0;
  const void* data = nullptr;
  ALsizei size = 0;
  ALsizei frequency = 0;
  std::vector<std::int16_t> values;  ///< what `data` held; empty when `size` is not positive
};

struct FakeOpenAL {
  static constexpr ALuint kSource = 9;
  static constexpr ALuint kBuffer = 7;

  std::vector<std::string> calls;
  std::vector<FakeUpload> uploads;
  int stateQuestions = 0;
  int errorQuestions = 0;

  bool failToOpen = false;
  bool failToCreate = false;
  bool failToMakeCurrent = false;
  ALint state = AL_INITIAL;    ///< `alSourcePlay` and `alSourceStop` change it
  std::deque<ALenum> pending;  ///< what `alGetError` returns next; AL_NO_ERROR at the end
};

/// The one stand-in of the process.
FakeOpenAL& fakeOpenAL();

}  // namespace quorbel
