// The kinds of input that this program reads: each is a file of its own in this folder.
#pragma once

#include <filesystem>
#include <memory>

#include "apps/input/reader.h"

namespace vistrel::app {

extern const ReaderType kPgm;   // PGM, binary or plain, and gray PAM; any number of images
extern const ReaderType kPng;   // gray, 8 or 16 bits; the sBIT chunk says how many are significant
extern const ReaderType kNpy;   // a NumPy array of uint8 or uint16 with two axes
extern const ReaderType kTiff;  // mosaic or gray, and DNG that is not JPEG-compressed
extern const ReaderType kFits;  // also compressed by tiles; the third axis counts frames
extern const ReaderType kGzipFits;   // the same in a gzip file
extern const ReaderType kCameraRaw;  // recognised by the file name extension

// A DNG whose samples only the plug-in for camera raw files can decode. Its tags are read here,
// those of the frame in the directory at `offset`.
std::unique_ptr<Reader> openCompressedDng(const Source& source, uint64_t offset);

// A headerless raw file. `options` must have a size and either bits or a pixel format. Throws
// ProgramError.
std::unique_ptr<Reader> openHeaderless(const Source& source, const InputOptions& options);

// Whether headerless frames shall be converted as they arrive, and do: from a pipe or a device, or
// from standard input ("-") if that is one of them.
bool isArriving(const std::filesystem::path& path, const InputOptions& options);

// A reader for these. Its description has the largest number of frames.
std::unique_ptr<Reader> openArriving(const std::filesystem::path& path,
                                     const InputOptions& options);

}  // namespace vistrel::app
