// The functions of libavformat, libavcodec, libavutil and libswresample that decoding uses.
//
// Loaded with the first sound; see DynamicLibrary for the reason.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/mathematics.h>
#include <libavutil/mem.h>
#include <libswresample/swresample.h>
}

#define LIBAV_FUNCTIONS(F)                                                                                   \
    F(av_channel_layout_compare)                                                                             \
    F(av_channel_layout_copy)                                                                                \
    F(av_channel_layout_default)                                                                             \
    F(av_channel_layout_uninit)                                                                              \
    F(av_dict_free)                                                                                          \
    F(av_dict_set)                                                                                           \
    F(av_find_best_stream)                                                                                   \
    F(av_find_input_format)                                                                                  \
    F(av_frame_alloc)                                                                                        \
    F(av_frame_free)                                                                                         \
    F(av_log_set_level)                                                                                      \
    F(av_max_alloc)                                                                                          \
    F(av_packet_alloc)                                                                                       \
    F(av_packet_free)                                                                                        \
    F(av_packet_unref)                                                                                       \
    F(av_read_frame)                                                                                         \
    F(av_rescale_q)                                                                                          \
    F(av_seek_frame)                                                                                         \
    F(avcodec_alloc_context3)                                                                                \
    F(avcodec_flush_buffers)                                                                                 \
    F(avcodec_free_context)                                                                                  \
    F(avcodec_open2)                                                                                         \
    F(avcodec_parameters_to_context)                                                                         \
    F(avcodec_receive_frame)                                                                                 \
    F(avcodec_send_packet)                                                                                   \
    F(avformat_close_input)                                                                                  \
    F(avformat_find_stream_info)                                                                             \
    F(avformat_open_input)                                                                                   \
    F(swr_alloc_set_opts2)                                                                                   \
    F(swr_convert)                                                                                           \
    F(swr_free)                                                                                              \
    F(swr_get_out_samples)                                                                                   \
    F(swr_init)

struct LibavLibrary {
#define LIBAV_POINTER(name) decltype(&::name) name = nullptr;
    LIBAV_FUNCTIONS(LIBAV_POINTER)
#undef LIBAV_POINTER

    // Loads the libraries the first time; null where they are not installed. Safe from any thread.
    static const LibavLibrary* shared();
};
