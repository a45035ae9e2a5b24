// Two copies of this layer and libVistrel in one process share no state.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "vistrel/processor.h"
#include "vistrel/vistrel.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

// A library of which every object is a copy of its own, with names that only this object sees.
class Library {
 public:
  explicit Library(const char* file)
      : handle_(dlopen(copyOf(file).c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!handle_) ADD_FAILURE() << dlerror();
  }

  template <class Function>
  Function* find(const char* name, Function*) const {
    auto* const found = reinterpret_cast<Function*>(dlsym(handle_, name));
    if (!found) ADD_FAILURE() << name;
    return found;
  }

 private:
  static std::string copyOf(const std::filesystem::path& file) {
    static int copies = 0;
    const std::string name = testing::TempDir() + std::to_string(getpid()) + "_" +
                             std::to_string(copies++) + file.filename().string();
    std::filesystem::copy_file(file, name, std::filesystem::copy_options::overwrite_existing);
    copies_.paths.push_back(name);
    return name;
  }

  struct Copies {
    std::vector<std::string> paths;
    ~Copies() {
      for (const auto& path : paths) std::filesystem::remove(path);
    }
  };
  static inline Copies copies_;
  void* handle_;
};
#define VISTREL_NAME(library, function) \
  (library).find(#function, static_cast<decltype(&function)>(nullptr))

class Layer : Library {
 public:
  Layer() : Library(VISTREL_HOST_FILE) {}

  size_t level() const { return VISTREL_NAME(*this, vistrel_level)(); }
  void setLevel(size_t level) const {
    EXPECT_EQ(VISTREL_NAME(*this, vistrel_set_level)(level, nullptr), VISTREL_OK);
  }
  int freeStreams() const {
    std::vector<vistrel_stream*> streams;
    vistrel_stream* stream = nullptr;
    while (!VISTREL_NAME(*this, vistrel_stream_acquire)(VISTREL_NO_WAIT, &stream, nullptr))
      streams.push_back(stream);
    for (auto* s : streams) VISTREL_NAME(*this, vistrel_stream_release)(s, nullptr);
    return int(streams.size());
  }
  void acquire() const {
    vistrel_stream* stream = nullptr;
    VISTREL_NAME(*this, vistrel_stream_acquire)(VISTREL_NO_WAIT, &stream, nullptr);
  }

  // Of a flat frame.
  void expectConverts(uint32_t width, uint32_t height, uint8_t value) const {
    const std::vector<uint8_t> samples(size_t{width} * height, value);
    vistrel_frame frame{};
    frame.samples = samples.data(), frame.size = samples.size();
    frame.width = width, frame.height = height;
    frame.bytes_per_sample = 1, frame.bits = 8;
    frame.phase = VISTREL_RGGB;
    vistrel_conversion conversion{};
    VISTREL_NAME(*this, vistrel_default_conversion)(&frame, &conversion);
    std::vector<uint8_t> pixels(3 * samples.size());
    const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
    vistrel_error error{};
    EXPECT_EQ(VISTREL_NAME(*this, vistrel_convert)(&frame, &conversion, &image, &error), VISTREL_OK)
        << error.text;
    EXPECT_EQ(pixels, std::vector<uint8_t>(pixels.size(), value));
  }
};

TEST(Layers, ShareNothing) {
  const Layer first;
  first.expectConverts(640, 480, 1);
  const Layer second;
  second.expectConverts(64, 64, 2);
  first.expectConverts(640, 480, 3);
  const Library image(VISTREL_FILE);
  VISTREL_NAME(image, ImgLoadDriver)();
  first.expectConverts(640, 480, 4);
  second.expectConverts(900, 700, 5);
}

TEST(Layers, HaveLevelsOfTheirOwn) {
  const Layer first, second;
  const size_t widest = second.level();
  const Library image(VISTREL_FILE);
  VISTREL_NAME(image, ImgLoadDriver)();
  const auto indexOfImage = [&] { return *VISTREL_NAME(image, ippJumpIndexForMergedLibs); };
  const uint32_t index = indexOfImage();
  first.setLevel(0);
  EXPECT_EQ(second.level(), widest);
  EXPECT_EQ(indexOfImage(), index);
  VISTREL_NAME(image, ippSetCpuFeaturesMask)(0);
  EXPECT_EQ(first.level(), 0u);
  EXPECT_EQ(second.level(), widest);
  first.expectConverts(100, 80, 6);
  second.expectConverts(100, 80, 7);
}

TEST(Layers, HaveStreamsOfTheirOwn) {
  const Layer first, second;
  first.acquire();
  EXPECT_EQ(first.freeStreams(), VISTREL_MAX_STREAMS - 1);
  EXPECT_EQ(second.freeStreams(), VISTREL_MAX_STREAMS);
}

}  // namespace
}  // namespace vistrel
