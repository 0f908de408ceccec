// What the sanitizers ask a program for; without them nothing calls these functions.

extern "C" const char* __asan_default_options();
extern "C" const char* __lsan_default_suppressions();

/// A request for too much memory gives a null pointer, as without the sanitizer.
const char* __asan_default_options() { return "allocator_may_return_null=1"; }

/// libsndfile does not give back what it took for an OGG file that it then refuses.
const char* __lsan_default_suppressions() { return "leak:vorbis_info_init\n"; }
