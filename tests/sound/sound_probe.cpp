#include <AL/al.h>
#include <AL/alc.h>

#include <chrono>
#include <functional>
#include <iostream>
#include <string>
#include <thread>

#include "sound/audio_io.h"

// Runs the player through the real OpenAL as its arguments say, in their order, and prints what
// each of the questions gives. OpenAL's own configuration comes from the environment.
//
//   init, load PATH, segment FROM TO, play, stop, free, playing, samples, position MS
//   begun     waits until the source has played something
//   finished  waits until nothing plays
//
// Exit status: 0, 2 for a word that is none of these, 3 when a wait took too long.

namespace {

constexpr auto kPatience = std::chrono::seconds(20);

bool waitFor(const std::function<bool()>& reached) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!reached()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

/// Whether a source has left the first sample behind. The player does not show its source, so this
/// asks all that there may be: OpenAL Soft counts them from 1.
bool hasBegun() {
  constexpr ALuint kMostSources = 64;
  for (ALuint source = 1; source <= kMostSources; ++source) {
    ALint offset = 0;
    if (alIsSource(source) == AL_TRUE) alGetSourcei(source, AL_SAMPLE_OFFSET, &offset);
    if (offset > 0) return true;
  }
  return false;
}

int run(quorbel::AudioIO& audio, int count, char** words) {
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    const auto next = [&]() { return std::string(i + 1 < count ? words[++i] : ""); };
    if (word == "init") {
      std::cout << "init " << audio.init() << std::endl;
    } else if (word == "load") {
      std::cout << "load " << audio.load(next()) << std::endl;
    } else if (word == "segment") {
      const double from = std::stod(next());
      audio.setSegment(from, std::stod(next()));
    } else if (word == "play") {
      audio.play();
    } else if (word == "stop") {
      audio.stop();
    } else if (word == "free") {
      audio.freeSamples();
    } else if (word == "playing") {
      std::cout << "playing " << audio.isPlaying() << std::endl;
    } else if (word == "samples") {
      std::cout << "samples " << (audio.samples() != nullptr) << std::endl;
    } else if (word == "position") {
      std::cout << "position " << audio.positionFraction(std::stoi(next())) << std::endl;
    } else if (word == "begun") {
      if (!waitFor(hasBegun)) return 3;
    } else if (word == "finished") {
      if (!waitFor([&]() { return !audio.isPlaying(); })) return 3;
    } else {
      return 2;
    }
  }
  return 0;
}

}  // namespace

int main(int count, char** words) {
  int status = 0;
  {
    quorbel::AudioIO audio;
    status = run(audio, count, words);
  }
  std::cout << "context " << (alcGetCurrentContext() != nullptr) << std::endl;
  return status;
}
