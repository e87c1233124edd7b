// What takes most of the time is to note where memory was allocated, and to keep what was freed so that late uses are
// found; one input frees less than this keeps. Whoever looks into a finding reads its file again with
// ASAN_OPTIONS=malloc_context_size=30.
extern "C" const char* __asan_default_options()
{
    return "malloc_context_size=1:quarantine_size_mb=2:thread_local_quarantine_size_kb=64";
}
