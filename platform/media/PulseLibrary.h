// The functions of the sound server's client library. Loaded with the first play; see DynamicLibrary.
#pragma once

#include <pulse/pulseaudio.h>

#define PULSE_FUNCTIONS(F)                                                                                   \
    F(pa_context_connect)                                                                                    \
    F(pa_context_disconnect)                                                                                 \
    F(pa_context_get_state)                                                                                  \
    F(pa_context_new)                                                                                        \
    F(pa_context_set_state_callback)                                                                         \
    F(pa_context_unref)                                                                                      \
    F(pa_operation_cancel)                                                                                   \
    F(pa_operation_unref)                                                                                    \
    F(pa_stream_begin_write)                                                                                 \
    F(pa_stream_cancel_write)                                                                                \
    F(pa_stream_connect_playback)                                                                            \
    F(pa_stream_disconnect)                                                                                  \
    F(pa_stream_drain)                                                                                       \
    F(pa_stream_get_state)                                                                                   \
    F(pa_stream_get_time)                                                                                    \
    F(pa_stream_is_suspended)                                                                                \
    F(pa_stream_new)                                                                                         \
    F(pa_stream_set_state_callback)                                                                          \
    F(pa_stream_set_suspended_callback)                                                                      \
    F(pa_stream_set_write_callback)                                                                          \
    F(pa_stream_unref)                                                                                       \
    F(pa_stream_writable_size)                                                                               \
    F(pa_stream_write)                                                                                       \
    F(pa_threaded_mainloop_free)                                                                             \
    F(pa_threaded_mainloop_get_api)                                                                          \
    F(pa_threaded_mainloop_lock)                                                                             \
    F(pa_threaded_mainloop_new)                                                                              \
    F(pa_threaded_mainloop_start)                                                                            \
    F(pa_threaded_mainloop_stop)                                                                             \
    F(pa_threaded_mainloop_unlock)

struct PulseLibrary {
#define PULSE_POINTER(name) decltype(&::name) name = nullptr;
    PULSE_FUNCTIONS(PULSE_POINTER)
#undef PULSE_POINTER

    // Loads the library the first time; null where it is not installed. Safe from any thread.
    static const PulseLibrary* shared();
};
