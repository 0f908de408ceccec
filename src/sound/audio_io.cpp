#include "sound/audio_io.h"

#include <AL/alc.h>
#include <sndfile.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "sound/segment.h"

namespace quorbel {
namespace {

struct SoundFileCloser {
  void operator()(SNDFILE* file) const { sf_close(file); }
};
using SoundFile = std::unique_ptr<SNDFILE, SoundFileCloser>;

/// Files that ended too early. They are kept open on purpose, for the rest of the process: that
/// costs one descriptor for each file that `load` refused, and nothing reads from them any more.
std::vector<SoundFile>& filesCutShort() {
  static std::vector<SoundFile> files;
  return files;
}

/// libsndfile takes a file that it does not recognise for raw samples when its name ends in .au,
/// .snd, .vox or .gsm; such a file has no header.
bool hasHeader(const SF_INFO& info) { return (info.format & SF_FORMAT_TYPEMASK) != SF_FORMAT_RAW; }

/// A file of floats whose full scale is 1.0; `file` stays where it is. Some programs store floats
/// in the range of 16-bit integers: those are read as they stand.
bool holdsFractions(SNDFILE* file, const SF_INFO& info) {
  const int encoding = info.format & SF_FORMAT_SUBMASK;
  if (encoding != SF_FORMAT_FLOAT && encoding != SF_FORMAT_DOUBLE) return false;
  double loudest = 0.0;
  sf_command(file, SFC_CALC_SIGNAL_MAX, &loudest, sizeof(loudest));
  return loudest > 0.0 && loudest <= 1.0;
}

/// Reads `count` values into `samples`; false when fewer arrive.
bool readSamples(SNDFILE* file, const SF_INFO& info, std::int16_t* samples, sf_count_t count) {
  // libsndfile turns floats into integers as they stand, which would make -1, 0 or 1 of all
  // fractions. With this command it scales them, so that the loudest becomes the largest.
  if (holdsFractions(file, info)) sf_command(file, SFC_SET_SCALE_FLOAT_INT_READ, nullptr, SF_TRUE);
  return sf_read_short(file, samples, count) == count;
}

}  // namespace

AudioIO::~AudioIO() { closeDevice(); }

bool AudioIO::init() {
  closeDevice();
  ALCdevice* device = alcOpenDevice(nullptr);
  if (device == nullptr) return false;
  ALCcontext* context = alcCreateContext(device, nullptr);
  if (context == nullptr || alcMakeContextCurrent(context) == ALC_FALSE) {
    if (context != nullptr) alcDestroyContext(context);
    alcCloseDevice(device);
    return false;
  }
  alGenBuffers(1, &m_Buffer);
  alGenSources(1, &m_Source);
  m_Initialised = true;
  return true;
}

void AudioIO::closeDevice() {
  if (!m_Initialised) return;
  stop();
  // OpenAL does not delete a buffer that a source still holds.
  alSourcei(m_Source, AL_BUFFER, 0);
  alDeleteBuffers(1, &m_Buffer);
  alDeleteSources(1, &m_Source);
  ALCcontext* context = alcGetCurrentContext();
  ALCdevice* device = alcGetContextsDevice(context);
  alcMakeContextCurrent(nullptr);
  alcDestroyContext(context);
  alcCloseDevice(device);
  m_Source = 0;
  m_Buffer = 0;
  m_Initialised = false;
}

bool AudioIO::load(const std::string& path) {
  SF_INFO info{};  // a format of 0 has libsndfile find the format in the file's header
  SoundFile file(sf_open(path.c_str(), SFM_READ, &info));
  if (file == nullptr || !hasHeader(info)) return false;

  m_Channels = info.channels;
  m_Frames = lowFrameCount(info.frames);
  m_SampleRate = info.samplerate;
  m_Peak = 0;
  m_Samples.reset();  // first: the old and the new sound need not fit into memory together
  m_Samples = allocateSamples(info.frames, info.channels, memoryForSamples());
  if (m_Samples == nullptr) {
    m_Frames = 0;
    return false;
  }

  const sf_count_t count = info.frames * info.channels;
  if (!readSamples(file.get(), info, m_Samples.get(), count)) {
    filesCutShort().push_back(std::move(file));
    return false;
  }
  file.reset();
  if (count > 0) {
    const std::int16_t* first = m_Samples.get();
    m_Peak = std::max<std::int32_t>(0, *std::max_element(first, first + count));
  }
  return true;
}

void AudioIO::setSegment(double from, double to) {
  if (!m_Initialised || m_Samples == nullptr || isPlaying()) return;
  const Segment segment = segmentBetween(from, to, m_Frames);
  m_SegmentStart = segment.start;
  m_SegmentEnd = segment.end;

  // Above 2^31 - 1 bytes the size wraps to a negative one, which OpenAL refuses like any other.
  const std::int64_t bytes = (std::int64_t{m_SegmentEnd} - m_SegmentStart) * 2;
  const ALenum format = m_Channels == 2 ? AL_FORMAT_STEREO16 : AL_FORMAT_MONO16;
  // OpenAL does not change the contents of a buffer that a source still holds.
  alSourcei(m_Source, AL_BUFFER, 0);
  alBufferData(m_Buffer, format, m_Samples.get() + m_SegmentStart, static_cast<ALsizei>(bytes),
               m_SampleRate);
  if (alGetError() != AL_NO_ERROR) {
    // The first call has cleared the error: the number is that of a further one, so nearly always
    // 0.
    std::cout << "OpenAL : Error " + std::to_string(alGetError()) << std::endl;
  }
}

void AudioIO::play() {
  if (!m_Initialised || m_Samples == nullptr || isPlaying()) return;
  alSourcei(m_Source, AL_BUFFER, static_cast<ALint>(m_Buffer));
  alSourcePlay(m_Source);
}

void AudioIO::stop() {
  if (isPlaying()) alSourceStop(m_Source);
}

bool AudioIO::isPlaying() const {
  if (!m_Initialised) return false;
  ALint state = AL_INITIAL;
  alGetSourcei(m_Source, AL_SOURCE_STATE, &state);
  return state == AL_PLAYING;
}

double AudioIO::positionFraction(std::int32_t elapsedMs) const {
  return isPlaying() ? playedFraction(elapsedMs, m_SampleRate, m_Frames, m_Channels) : 0.0;
}

void AudioIO::freeSamples() {
  if (!isPlaying()) m_Samples.reset();
}

}  // namespace quorbel
