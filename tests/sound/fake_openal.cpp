#include "fake_openal.h"

#include <AL/alc.h>

#include <cstddef>

namespace quorbel {

FakeOpenAL& fakeOpenAL() {
  static FakeOpenAL fake;
  return fake;
}

namespace {

void note(const std::string& call) { fakeOpenAL().calls.push_back(call); }

int deviceThing = 0;
int contextThing = 0;
ALCdevice* theDevice() { return reinterpret_cast<ALCdevice*>(&deviceThing); }
ALCcontext* theContext() { return reinterpret_cast<ALCcontext*>(&contextThing); }

std::string named(const void* thing) {
  if (thing == nullptr) return "null";
  if (thing == &deviceThing) return "device";
  return thing == &contextThing ? "context" : "stranger";
}

ALCcontext* currentContext = nullptr;

}  // namespace
}  // namespace quorbel

using namespace quorbel;

extern "C" {

ALCdevice* alcOpenDevice(const ALCchar* name) {
  note(name == nullptr ? "open default device" : "open named device");
  return fakeOpenAL().failToOpen ? nullptr : theDevice();
}

ALCcontext* alcCreateContext(ALCdevice* device, const ALCint* attributes) {
  note("create context on " + named(device) + (attributes == nullptr ? "" : " with attributes"));
  return fakeOpenAL().failToCreate ? nullptr : theContext();
}

ALCboolean alcMakeContextCurrent(ALCcontext* context) {
  note("make " + named(context) + " current");
  if (fakeOpenAL().failToMakeCurrent) return ALC_FALSE;
  currentContext = context;
  return ALC_TRUE;
}

void alcDestroyContext(ALCcontext* context) { note("destroy " + named(context)); }

ALCboolean alcCloseDevice(ALCdevice* device) {
  note("close " + named(device));
  return ALC_TRUE;
}

ALCcontext* alcGetCurrentContext() { return currentContext; }

ALCdevice* alcGetContextsDevice(ALCcontext* context) {
  return context == theContext() ? theDevice() : nullptr;
}

void alGenBuffers(ALsizei count, ALuint* buffers) {
  note("make " + std::to_string(count) + " buffer");
  *buffers = FakeOpenAL::kBuffer;
}

void alGenSources(ALsizei count, ALuint* sources) {
  note("make " + std::to_string(count) + " source");
  *sources = FakeOpenAL::kSource;
}

void alDeleteBuffers(ALsizei count, const ALuint* buffers) {
  note("delete " + std::to_string(count) + " buffer " + std::to_string(*buffers));
}

void alDeleteSources(ALsizei count, const ALuint* sources) {
  note("delete " + std::to_string(count) + " source " + std::to_string(*sources));
}

void alSourcei(ALuint source, ALenum parameter, ALint value) {
  note((parameter == AL_BUFFER ? "attach " : "set something to ") + std::to_string(value) + " to " +
       std::to_string(source));
}

void alBufferData(ALuint buffer, ALenum format, const ALvoid* data, ALsizei size,
                  ALsizei frequency) {
  note("upload to " + std::to_string(buffer));
  FakeUpload upload{format, data, size, frequency, {}};
  const auto* values = static_cast<const std::int16_t*>(data);
  if (size > 0) upload.values.assign(values, values + size / 2);
  fakeOpenAL().uploads.push_back(upload);
}

void alSourcePlay(ALuint source) {
  note("play " + std::to_string(source));
  fakeOpenAL().state = AL_PLAYING;
}

void alSourceStop(ALuint source) {
  note("stop " + std::to_string(source));
  fakeOpenAL().state = AL_STOPPED;
}

void alGetSourcei(ALuint source, ALenum parameter, ALint* value) {
  ++fakeOpenAL().stateQuestions;
  if (source == FakeOpenAL::kSource && parameter == AL_SOURCE_STATE) *value = fakeOpenAL().state;
}

ALenum alGetError() {
  FakeOpenAL& fake = fakeOpenAL();
  ++fake.errorQuestions;
  if (fake.pending.empty()) return AL_NO_ERROR;
  const ALenum error = fake.pending.front();
  fake.pending.pop_front();
  return error;
}

}  // extern "C"
