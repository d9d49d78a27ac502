#include "tests/platform/media/RemuxedClip.h"

extern "C" {
#include <libavformat/avformat.h>
}

RemuxedClip::RemuxedClip(const NSString& clip, Form form)
{
    const auto require = [&](bool holds) {
        if (!holds)
            qFatal("%s cannot be written anew", qPrintable(clip));
    };
    AVFormatContext* source = nullptr;
    require(avformat_open_input(&source, clip.toUtf8().constData(), nullptr, nullptr) == 0);
    require(avformat_find_stream_info(source, nullptr) >= 0 && source->nb_streams == 1);
    const AVStream* const from = source->streams[0];

    AVFormatContext* target = nullptr;
    const char* const muxer = form == Form::BareStream ? "adts" : "mp4";
    require(avformat_alloc_output_context2(&target, nullptr, muxer, path().toUtf8().constData()) >= 0);
    AVStream* const to = avformat_new_stream(target, nullptr);
    require(to && avcodec_parameters_copy(to->codecpar, from->codecpar) >= 0);
    to->codecpar->codec_tag = 0;
    to->time_base = from->time_base;
    require(avio_open(&target->pb, path().toUtf8().constData(), AVIO_FLAG_WRITE) >= 0);
    require(avformat_write_header(target, nullptr) >= 0);

    const AVRational second { 1, 1 };
    const std::int64_t delay = form == Form::LateStart ? av_rescale_q(1, second, from->time_base) / 2 : 0;
    AVPacket* packet = av_packet_alloc();
    for (; av_read_frame(source, packet) >= 0; ++m_packets) {
        packet->pts += delay;
        packet->dts += delay;
        av_packet_rescale_ts(packet, from->time_base, to->time_base);
        packet->pos = -1;
        require(av_interleaved_write_frame(target, packet) >= 0);
    }
    av_packet_free(&packet);
    require(av_write_trailer(target) >= 0);
    avio_closep(&target->pb);
    avformat_free_context(target);
    avformat_close_input(&source);
}
