// Laws that hold for conversions whatever their pixels are: two requests that must give the same
// bytes. VISTREL_AMOUNT in the environment is the number of examples of each law, VISTREL_SEED
// draws others.
#include <array>
#include <cstdio>
#include <optional>

#include "tests/amount.h"
#include "tests/host/random_case.h"

namespace vistrel {
namespace {

using Pixels = std::vector<uint8_t>;

// A request with samples of its own.
struct Request {
  explicit Request(const RandomCase& c)
      : samples(c.samples), frame(c.frame), conversion(c.conversion) {}

  Pixels image() {
    frame.samples = samples.data(), frame.size = samples.size();
    const Image image = convert(frame, conversion);
    return {image.pixels.begin(), image.pixels.end()};
  }
  bool isPacked() const { return frame.packing != 0; }
  bool isDeep() const { return frame.bytes_per_sample == 2; }

  uint32_t sampleAt(size_t x, size_t y) const {
    const uint8_t* at = &samples[y * frame.stride + x * frame.bytes_per_sample];
    return isDeep() ? at[0] | at[1] << 8 : at[0];
  }
  void setSample(size_t x, size_t y, uint32_t value) {
    uint8_t* at = &samples[y * frame.stride + x * frame.bytes_per_sample];
    at[0] = static_cast<uint8_t>(value);
    if (isDeep()) at[1] = static_cast<uint8_t>(value >> 8);
  }
  uint32_t samplesPerRow() const { return frame.width * (frame.phase == VISTREL_BGR ? 3 : 1); }
  uint32_t fullScale() const { return (1u << frame.bits) - 1; }
  // The bits of a sample that count, as its low bits.
  uint32_t significant(uint32_t sample) const {
    return (frame.alignment ? sample >> (8 * frame.bytes_per_sample - frame.bits) : sample) &
           fullScale();
  }

  template <class Change>
  void change(const Change& newSample) {
    for (uint32_t y = 0; y < frame.height; ++y)
      for (uint32_t x = 0; x < samplesPerRow(); ++x)
        setSample(x, y, newSample(x, y, significant(sampleAt(x, y))));
    frame.alignment = VISTREL_LOW_BITS;
  }

  Pixels samples;
  vistrel_frame frame;
  vistrel_conversion conversion;
};

// What a law makes of a request that gives the image `plain`: the bytes that must be its bytes, or
// nothing if it says nothing about such requests.
using Images = std::optional<std::pair<Pixels, Pixels>>;
using Law = Images (*)(Request& r, Choice& choice);

Images rowsWithoutPadding(Request& r, Choice&) {
  const Pixels plain = r.image();
  const size_t row = rowBytesOf(r.frame);
  Pixels tight;
  for (uint32_t y = 0; y < r.frame.height; ++y)
    tight.insert(tight.end(), &r.samples[y * r.frame.stride], &r.samples[y * r.frame.stride] + row);
  r.samples = tight, r.frame.stride = 0;
  return {{plain, r.image()}};
}

// With native edges, a region is a frame of its own.
Images regionsAreFrames(Request& r, Choice& choice) {
  vistrel_region& region = r.conversion.region;
  if (r.isPacked() || r.conversion.white_balance == VISTREL_BALANCE_GRAY_WORLD) return {};
  r.conversion.edges = VISTREL_EDGES_NATIVE;
  region.x = choice.below(r.frame.width), region.y = choice.below(r.frame.height);
  region.width = 1 + choice.below(r.frame.width - region.x);
  region.height = 1 + choice.below(r.frame.height - region.y);
  if (rejectionOf(r.frame, r.conversion).status) return {};
  const Pixels plain = r.image();
  const size_t sample = r.frame.phase == VISTREL_BGR ? 3 : 1;
  r.samples.erase(
      r.samples.begin(),
      r.samples.begin() + static_cast<ptrdiff_t>(region.y * r.frame.stride +
                                                 region.x * sample * r.frame.bytes_per_sample));
  r.samples.resize(r.frame.stride * r.frame.height);
  r.frame.phase = vistrel_phase_at(r.frame.phase, region.x, region.y);
  std::array<uint32_t, 4> black{};
  for (uint32_t i = 0; i < 4; ++i)
    black[i] = r.conversion.black[2 * ((i / 2 + region.y) % 2) + (i + region.x) % 2];
  std::copy(black.begin(), black.end(), r.conversion.black);
  r.frame.width = region.width, r.frame.height = region.height;
  region = {};
  return {{plain, r.image()}};
}

// With padded edges, a region is a part of the image of the frame.
Images regionsArePartsOfImages(Request& r, Choice& choice) {
  if (r.conversion.binning > 1 || r.frame.phase >= VISTREL_MONO) return {};
  r.conversion.format = choice.of({uint32_t{VISTREL_BGR24}, uint32_t{VISTREL_RGB24}});
  r.conversion.edges = VISTREL_EDGES_PADDED;
  r.conversion.region = {};
  const Pixels whole = r.image();
  const uint32_t x = choice.below(r.frame.width - 1), y = choice.below(r.frame.height - 1);
  const uint32_t width = 2 + choice.below(r.frame.width - x - 1);
  const uint32_t height = 2 + choice.below(r.frame.height - y - 1);
  Pixels part;
  for (uint32_t row = y; row < y + height; ++row) {
    const uint8_t* begin = &whole[(size_t{row} * r.frame.width + x) * 3];
    part.insert(part.end(), begin, begin + size_t{width} * 3);
  }
  r.conversion.region = {x, y, width, height};
  return {{part, r.image()}};
}

Images highBitsAreLowBits(Request& r, Choice&) {
  if (r.isPacked() || !r.isDeep()) return {};
  const Pixels plain = r.image();
  r.change([](uint32_t, uint32_t, uint32_t s) { return s; });
  return {{plain, r.image()}};
}

Images blackIsSubtracted(Request& r, Choice&) {
  if (r.isPacked() || r.frame.phase == VISTREL_BGR) return {};
  const Pixels plain = r.image();
  r.change([&](uint32_t x, uint32_t y, uint32_t s) {
    return s - std::min(s, r.conversion.black[2 * (y % 2) + x % 2]);
  });
  setBlack(r.conversion, 0);
  return {{plain, r.image()}};
}

Images gainsMultiply(Request& r, Choice&) {
  if (r.isPacked() || r.conversion.white_balance != VISTREL_BALANCE_GAINS) return {};
  setBlack(r.conversion, 0);
  const Pixels plain = r.image();
  r.change([&](uint32_t x, uint32_t y, uint32_t s) {
    const uint64_t gain = r.conversion.gains[vistrel_colour_at(r.frame.phase, x, y)];
    return static_cast<uint32_t>(std::min<uint64_t>((s * gain + 2048) >> 12, r.fullScale()));
  });
  r.conversion.white_balance = VISTREL_BALANCE_NONE;
  return {{plain, r.image()}};
}

Images grayWorldGainsAreMeasured(Request& r, Choice&) {
  if (r.frame.phase >= VISTREL_MONO) return {};
  r.conversion.white_balance = VISTREL_BALANCE_GRAY_WORLD;
  const Pixels plain = r.image();
  vistrel_conversion whole = r.conversion;
  whole.region = {};
  if (vistrel_measure_gains(&r.frame, &whole, r.conversion.gains, nullptr)) return {};
  r.conversion.white_balance = VISTREL_BALANCE_GAINS;
  return {{plain, r.image()}};
}

Images truncationDropsLowBits(Request& r, Choice&) {
  if (r.isPacked() || r.conversion.truncate_to == 0 || r.frame.bits <= 10) return {};
  r.conversion.white_balance = VISTREL_BALANCE_NONE;
  setBlack(r.conversion, 0);
  if (rejectionOf(r.frame, r.conversion).status) return {};
  const Pixels plain = r.image();
  const uint32_t shift = r.frame.bits - r.conversion.truncate_to;
  r.change([&](uint32_t, uint32_t, uint32_t s) { return s >> shift; });
  r.frame.bits = r.conversion.truncate_to;
  r.conversion.truncate_to = 0;
  return {{plain, r.image()}};
}

Images formatsHaveTheSamePixels(Request& r, Choice&) {
  if (r.frame.phase == VISTREL_MONO) return {};
  r.conversion.format = VISTREL_BGR24;
  if (rejectionOf(r.frame, r.conversion).status) return {};
  Pixels plain = r.image();
  for (size_t i = 0; i < plain.size(); i += 3) std::swap(plain[i], plain[i + 2]);
  r.conversion.format = VISTREL_RGB24_PLANAR;
  const Pixels planes = r.image();
  Pixels pixels;
  for (size_t i = 0; i < planes.size() / 3; ++i)
    for (size_t plane = 0; plane < 3; ++plane)
      pixels.push_back(planes[plane * planes.size() / 3 + i]);
  r.conversion.format = VISTREL_RGB24;
  return {{plain, r.image() == plain ? pixels : Pixels{}}};
}

Images mirroringIsDoneAfterwards(Request& r, Choice& choice) {
  if (r.frame.phase == VISTREL_MONO) return {};
  r.conversion.format = VISTREL_BGR24;
  if (rejectionOf(r.frame, r.conversion).status) return {};
  const uint32_t width = layoutOf(r.frame, r.conversion).width;
  const Pixels plain = r.image();
  const bool isMirrored = choice.oneIn(2);
  const size_t pixels = plain.size() / 3;
  Pixels turned;
  for (size_t i = 0; i < pixels; ++i) {
    const size_t from = isMirrored ? i / width * width + width - 1 - i % width : pixels - 1 - i;
    turned.insert(turned.end(), &plain[3 * from], &plain[3 * from] + 3);
  }
  r.conversion.orientation = isMirrored ? VISTREL_MIRRORED : VISTREL_TURNED_180;
  return {{turned, r.image()}};
}

Images threadsShareTheWork(Request& r, Choice& choice) {
  static const OwnTeam team(4);
  const Pixels plain = r.image();
  r.conversion.team = team;
  r.conversion.threads = 2 + choice.below(3);
  return {{plain, r.image()}};
}

Images rowsAreMadeInAnyOrder(Request& r, Choice& choice) {
  const vistrel_layout layout = layoutOf(r.frame, r.conversion);
  const Pixels plain = r.image();
  Pixels pixels(plain.size());
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  const OwnStream stream;
  const uint32_t half = layout.height / 2 & ~1u, quarter = half / 2 & ~1u;
  const std::array<std::pair<uint32_t, uint32_t>, 3> bands{
      {{half, layout.height}, {0, quarter}, {quarter, half}}};
  const uint32_t first = choice.below(3);
  for (uint32_t i = 0; i < 3; ++i) {
    const auto [begin, end] = bands[(first + i) % 3];
    if (begin < end &&
        vistrel_convert_rows(stream, &r.frame, &r.conversion, &image, begin, end - begin, nullptr))
      return {};
  }
  return {{plain, pixels}};
}

Images rowsArePushed(Request& r, Choice& choice) {
  const Pixels plain = r.image();
  Pixels pixels(plain.size());
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  const OwnStream stream;
  if (vistrel_stream_begin(stream, &r.frame, &r.conversion, &image, nullptr)) return {};
  for (uint32_t y = 0; y < r.frame.height;) {
    const uint32_t rows = std::min(1 + choice.below(7), r.frame.height - y);
    const size_t at = y * r.frame.stride;
    if (vistrel_stream_push(stream, &r.samples[at], r.samples.size() - at, rows, nullptr, nullptr))
      return {};
    y += rows;
  }
  return {{plain, pixels}};
}

struct NamedLaw {
  const char* name;
  Law law;
};
void PrintTo(const NamedLaw& law, std::ostream* out) { *out << law.name; }

class Algebra : public ::testing::TestWithParam<NamedLaw> {};

TEST_P(Algebra, Holds) {
  const uint64_t amount = test::amount(1000);
  uint64_t examples = 0;
  for (uint32_t seed = test::seed() << 20; examples < amount; ++seed) {
    const RandomCase c(seed, 40, 30);
    Request request(c);
    Choice choice(~seed);
    const auto images = GetParam().law(request, choice);
    if (!images) continue;
    ++examples;
    ASSERT_EQ(images->first, images->second) << c.text() << ", seed " << seed;
  }
  std::printf("%llu examples hold\n", static_cast<unsigned long long>(examples));
}

constexpr NamedLaw kLaws[] = {
    {"RowsWithoutPadding", rowsWithoutPadding},
    {"RegionsAreFrames", regionsAreFrames},
    {"RegionsArePartsOfImages", regionsArePartsOfImages},
    {"HighBitsAreLowBits", highBitsAreLowBits},
    {"BlackIsSubtracted", blackIsSubtracted},
    {"GainsMultiply", gainsMultiply},
    {"GrayWorldGainsAreMeasured", grayWorldGainsAreMeasured},
    {"TruncationDropsLowBits", truncationDropsLowBits},
    {"FormatsHaveTheSamePixels", formatsHaveTheSamePixels},
    {"MirroringIsDoneAfterwards", mirroringIsDoneAfterwards},
    {"ThreadsShareTheWork", threadsShareTheWork},
    {"RowsAreMadeInAnyOrder", rowsAreMadeInAnyOrder},
    {"RowsArePushed", rowsArePushed},
};
INSTANTIATE_TEST_SUITE_P(Laws, Algebra, ::testing::ValuesIn(kLaws),
                         [](const auto& law) { return law.param.name; });

}  // namespace
}  // namespace vistrel
