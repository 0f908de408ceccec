// What the sanitizers ask the window tests for; without them nothing calls this function.

extern "C" const char* __asan_default_options();

/// The toolkit, its themes and fonts keep much to the end of the process that nobody gives back.
/// Leaks of the lattice, the layout and the sound are looked for in their own tests.
const char* __asan_default_options() { return "detect_leaks=0:allocator_may_return_null=1"; }
