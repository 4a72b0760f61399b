// Opening one local movie file with FFmpeg's libraries, and owners for what these hand out. Internal to this
// room.
#pragma once

#include <memory>
#include <string>

#include "platform/foundation/Error.h"

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;
struct AVStream;
struct SwrContext;
struct SwsContext;

namespace clipwave {

struct FreeLibraryObject {
  void operator()(AVFormatContext* input) const;
  void operator()(AVCodecContext* decoder) const;
  void operator()(AVPacket* packet) const;
  void operator()(AVFrame* frame) const;
  void operator()(SwrContext* resampler) const;
  void operator()(SwsContext* scaler) const;
};
using MovieInput = std::unique_ptr<AVFormatContext, FreeLibraryObject>;
using MovieDecoder = std::unique_ptr<AVCodecContext, FreeLibraryObject>;
using MoviePacket = std::unique_ptr<AVPacket, FreeLibraryObject>;
using MovieFrame = std::unique_ptr<AVFrame, FreeLibraryObject>;

// Asked again and again while a file is read; an answer other than 0 ends the reading. `context` must stay
// as long as the input does.
struct MovieInterruption {
  int (*isWanted)(void* context);
  void* context;
};

// Keeps the libraries from printing, for the whole process.
void silenceMovieLibraries();

// The file at an absolute path, its header read; streams without a header are not analysed yet. Reads this
// one file and nothing that it may refer to. Fails for what is no regular file, for pictures, text and
// playlists, and for what may not be read; the error's code is one of NSCocoaErrorDomain.
Result<MovieInput> openMovieInput(const std::string& path, MovieInterruption interruption);

// In seconds, as far as the file says; 0 where it does not, or says what cannot be.
double durationOf(const AVFormatContext& input);

// Whether a stream can be seen or heard.
bool isPlayable(const AVStream& stream);

}  // namespace clipwave
