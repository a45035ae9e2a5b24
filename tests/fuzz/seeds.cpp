// seeds FOLDER: writes small files for every target as FOLDER/TARGET/NAME.
#include <fmt/format.h>
#include <tiffio.h>

#include <cstdio>
#include <fstream>

#include "apps/names/pixel_format.h"
#include "apps/pictures/picture.h"
#include "tests/apps/input/fits_file.h"
#include "tests/apps/input/gzip.h"
#include "tests/apps/input/tiff_file.h"
#include "tests/apps/input/tiled_fits.h"
#include "tests/apps/pictures.h"

using namespace vistrel;

namespace {

namespace fs = std::filesystem;

uint32_t texture(uint32_t x, uint32_t y) { return (x * 37 ^ y * 11) & 255; }

void save(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

void pgms(const fs::path& folder) {
  save(folder / "8bit", pgm(5, 4, 255, texture));
  save(folder / "stream", pgm(3, 2, 1023, texture) + pgm(3, 2, 1023, texture) + "\n");
  save(folder / "comments", "P5 # a\n2 #b\n2\n255\nabcd");
  save(folder / "plain", "P2 3 2 # a\n1023\n1 2 #b\n1023 0\n17 5\n");
  const std::string pam = "P7\nWIDTH 2\nHEIGHT 2\nDEPTH 1\n#a\nMAXVAL 100\nTUPLTYPE A B\nENDHDR\n";
  save(folder / "pam", pam + "abcd" + pam + "efgh");
  save(folder / "phase", pgm(3, 2, 255, texture, "gbrg"));
}

void pngs(const fs::path& folder) {
  for (const uint32_t bits : {8u, 12u, 16u})
    for (const uint32_t channels : {1u, 3u}) {
      const size_t row = 6 * channels * (bits > 8 ? 2 : 1);
      Image image{{6, 5, channels, bits, row, row * 5, 0, 0, {}}, {}};
      image.pixels.assign(row * 5, 7);
      app::AtomicFile file(folder / (std::to_string(bits) + "x" + std::to_string(channels)));
      app::PictureDetails details;
      details.command = "vistrel convert";
      if (channels == 1) details.camera = app::unknownCamera(VISTREL_GRBG, bits);
      app::writePng(image, details, file);
      file.commit();
    }
}

void npys(const fs::path& folder) {
  using namespace std::string_literals;
  for (const std::string type : {"|u1", "<u2", ">u2"}) {
    const std::string text =
        "{'descr': '" + type + "', 'fortran_order': False, 'shape': (2, 3), }\n";
    const char size = static_cast<char>(text.size());
    save(folder / ("first" + type.substr(1)),
         "\x93NUMPY\1\0"s + size + "\0"s + text + "abcdefghijkl");
    save(folder / ("second" + type.substr(1)),
         "\x93NUMPY\2\0"s + size + "\0\0\0"s + text + "abcdefghijkl");
  }
}

void tiffs(const fs::path& folder) {
  TiffSpec spec;
  for (const uint32_t compression : {1u, 5u, 8u, 32773u}) {
    spec.compression = compression;
    spec.tile = compression == 5 ? 16 : 0;
    spec.bits = compression == 8 ? 16 : 12;
    writeTiff(folder / ("compression" + std::to_string(compression)), spec, texture);
  }
  spec.isInverse = true;
  writeTiff(folder / "inverse", spec, texture);
  spec.cfa = {0, 1, 1, 2};
  spec.linearization = {0, 1, 4, 9, 16, 4000};
  writeTiff(folder / "linearization", spec, texture);
  spec.linearization.clear();
  spec.isDng = spec.inSubdirectory = true;
  spec.activeArea = {1, 1, 4, 6};
  spec.white = 1023;
  spec.mode = "wb";
  spec.blackSize = {1, 2};
  spec.orientation = 6;
  spec.black = -1;
  spec.frame.rationals = {{TIFFTAG_BLACKLEVEL, {10, 11}},
                          {TIFFTAG_BLACKLEVELDELTAH, {0, 1, 0, 1, 0}}};
  spec.frame.pairs = {{TIFFTAG_DEFAULTCROPORIGIN, {1, 1}}, {TIFFTAG_DEFAULTCROPSIZE, {2, 2}}};
  const std::vector<float> matrix{0.75f, -0.15f, -0.1f, -0.45f, 1.25f, 0.22f, -0.08f, 0.2f, 0.6f};
  spec.camera.rationals = {{TIFFTAG_ASSHOTNEUTRAL, {0.5f, 1, 0.625f}},
                           {TIFFTAG_ANALOGBALANCE, {1, 1, 1}},
                           {TIFFTAG_COLORMATRIX1, matrix},
                           {TIFFTAG_CAMERACALIBRATION1, {1, 0, 0, 0, 1, 0, 0, 0, 1}},
                           {TIFFTAG_COLORMATRIX2, matrix}};
  spec.camera.codes = {{TIFFTAG_CALIBRATIONILLUMINANT1, 17}, {TIFFTAG_CALIBRATIONILLUMINANT2, 21}};
  spec.camera.texts = {{TIFFTAG_MODEL, "Model"}, {TIFFTAG_DATETIME, "2026:11:22 18:06:29"}};
  writeTiff(folder / "dng", spec, texture);
  spec.inSubdirectory = false;
  spec.exif.numbers = {{EXIFTAG_EXPOSURETIME, 0.004}, {EXIFTAG_FNUMBER, 5.6}};
  spec.isoSpeeds = {400};
  spec.camera.rationals.erase(TIFFTAG_ASSHOTNEUTRAL);
  spec.camera.pairs = {{TIFFTAG_ASSHOTWHITEXY, {0.31f, 0.33f}}};
  writeTiff(folder / "exif", spec, texture);
}

void fitses(const fs::path& folder) {
  auto header = cards(16, {"4", "3", "2"});
  header.push_back(card("BZERO", "32768"));
  header.push_back(card("BAYERPAT", "'RGGB    '"));
  header.push_back(card("XBAYROFF", "1"));
  header.push_back(card("ROWORDER", "'BOTTOM-UP'"));
  save(folder / "16bit", fits(header, std::string(48, 'a')));
  save(folder / "8bit", fits(cards(8, {"4", "3"}), "abcdefghijkl"));
  auto extension = cards(8, {"2", "1"});
  extension[0] = card("XTENSION", "'IMAGE   '");
  extension.push_back(card("PCOUNT", "0"));
  extension.push_back(card("GCOUNT", "1"));
  save(folder / "extension", fits(cards(8, {}), "") + fits(extension, "yz"));
  for (const int compression : {RICE_1, GZIP_1, GZIP_2}) {
    const fs::path path = folder / ("tiles" + std::to_string(compression));
    fs::remove(path);
    writeTiledFits(path, compression, 20, 17, texture);
  }
  for (const int bits : {-32, -64, 32})
    save(folder / ("reals" + std::to_string(bits)),
         fits(cards(bits, {"4", "3"}),
              std::string("\x3F\x80\0\0@Aab\x7F\xFF\xFF\xFF", 12) + std::string(84, '\x3F')));
}

void gzips(const fs::path& folder) {
  auto table = cards(8, {"4", "3"});
  table[0] = card("XTENSION", "'BINTABLE'");
  table.push_back(card("PCOUNT", "8"));
  table.push_back(card("GCOUNT", "1"));
  const std::string image = fits(cards(8, {"4", "3"}), "abcdefghijkl");
  save(folder / "image", deflated(image));
  save(folder / "table", deflated(image + fits(table, std::string(20, 'a'))));
  save(folder / "members", deflated(image.substr(0, 3000)) + deflated(image.substr(3000)));
  // Not compressed, so that changes reach the headers.
  save(folder / "stored", deflated(image, true, 0));
}

// The bytes from which Input::below() makes these numbers, and Input::take() their doubles.
std::string numbers(const std::vector<uint32_t>& values) {
  std::string bytes;
  for (const uint32_t value : values) bytes += static_cast<char>(2 * value);
  return bytes;
}

void headerless(const fs::path& folder) {
  const std::string samples(100, 'a');
  for (uint32_t bits = 8; bits <= 16; ++bits)  // no format, no flags
    save(folder / std::to_string(bits), numbers({5, 4, 100, bits}) + '\0' + samples);
  for (uint32_t format = 0; format < app::pixelFormats().size(); format += 5)
    save(folder / ("format" + std::to_string(format)),
         numbers({5, 4, format, 0}) + "\1" + std::string(1, '\0') + samples);
}

// A smooth picture of 12-bit samples, with padded rows and without, and its size.
void guesses(const fs::path& folder) {
  constexpr uint32_t kWidth = 60, kHeight = 44;
  for (const uint32_t padding : {0u, 8u}) {
    std::string bytes;
    for (uint32_t y = 0; y < kHeight; ++y) {
      for (uint32_t x = 0; x < kWidth; ++x) {
        const uint32_t sample = 900 + 13 * x + 9 * y + texture(x, y) / 8 + (x + y) % 2 * 300;
        bytes += {static_cast<char>(sample), static_cast<char>(sample >> 8)};
      }
      bytes.append(padding, '\0');
    }
    save(folder / fmt::format("padding{}", padding), '\0' + bytes);
    save(folder / fmt::format("size{}", padding), '\1' + numbers({kWidth, kHeight}) + bytes);
  }
}

struct HostSeed {
  uint32_t bits, format;  // of 8 bits: samples of a byte
  uint32_t algorithm = VISTREL_BILINEAR, gray = VISTREL_LUMA, binning = 1, packing = 0;
  bool isLarge = false, isThreaded = false, isUpward = false;
  uint32_t orientation = 0;
  bool isCalibrated = false, isFinished = false;
};

std::string flag(bool isSet) { return std::string(1, isSet ? '\1' : '\0'); }

// A number from which a choice follows a flag: this one, or `base` more than it.
std::string choice(uint32_t number, uint32_t base) {
  return number < base ? numbers({number}) + '\0' : numbers({0}) + '\1' + numbers({number - base});
}

// In the order in which the target consumes them: frame, conversion, image.
std::string frameBytes(const HostSeed& s) {
  const uint32_t bytes = s.bits > 8 ? 2 : 1;
  const uint32_t phase = s.format <= VISTREL_MONO16 ? VISTREL_MONO : VISTREL_RGGB;
  return numbers({s.isLarge ? 30u : 11u, s.isLarge ? 29u : 9u}) + flag(s.isLarge) +
         numbers({bytes, s.bits, phase}) + '\0' + numbers({0}) + flag(s.packing) +
         (s.packing ? numbers({s.packing}) : "") + '\1';
}

// Dark levels, gains from 2048 in steps of 7, a hot pixel.
std::string calibration() {
  using namespace std::string_literals;
  return "\x2d"s + "\0\5\0\3"s + "\0\0\x08\7"s + numbers({2, 3, 0});
}

// Neutral highlights, an exposure of 1, a matrix, a curve of three points.
std::string finish() {
  using namespace std::string_literals;
  return "\x29"s + numbers({1}) + "\1\0\x10"s + "\x38\xfb\0\xfc\x3a\xfd\1\xf8\x3c"s + numbers({3}) +
         "\0\0\0\xc0\xff\xff"s;
}

std::string conversion(const HostSeed& s) {
  const bool isAhd = s.algorithm == VISTREL_AHD, isDirectional = s.algorithm == VISTREL_DIRECTIONAL;
  const char other = isAhd ? '\0' : isDirectional ? '\2' : '\1';
  return choice(s.format, 256) + numbers({other == '\1' ? s.algorithm : 0}) + other +
         numbers({0, s.gray, s.binning, 0, 0}) + '\1' + numbers({VISTREL_MASK}) + '\0' +
         numbers({3, 3, 3, 3, 0, 100, 100, 100, 0}) + (s.isThreaded ? '\x31' : '\0') +
         numbers({s.isLarge}) + '\0' + numbers({s.binning > 1, s.orientation}) +
         (s.isCalibrated ? calibration() : flag(false)) + (s.isFinished ? finish() : flag(false));
}

void saveHost(const fs::path& path, const HostSeed& s) {
  save(path,
       '\0' + frameBytes(s) + conversion(s) + '\0' + flag(s.isUpward) + std::string(150, '\5'));
}

void hosts(const fs::path& folder) {
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    saveHost(folder / (std::string(a->name) + "8"), {8, VISTREL_BGR24, a->code});
    saveHost(folder / (std::string(a->name) + "10"), {10, VISTREL_BGR48, a->code});
    saveHost(folder / (std::string(a->name) + "-gray"), {8, VISTREL_GRAY8, a->code});
    saveHost(folder / (std::string(a->name) + "-raw"),
             {8, VISTREL_GRAY8, a->code, VISTREL_RAW_GRAY, 2});
  }
  for (size_t i = 0; const vistrel_format* format = vistrel_format_at(i); ++i) {
    HostSeed seed{10, format->code};
    seed.isUpward = format->planes == 1;
    for (seed.packing = 0; seed.packing < 6; ++seed.packing)
      saveHost(folder / (std::string(format->name) + std::to_string(seed.packing)), seed);
  }
  HostSeed large{8, VISTREL_GRAY8};
  large.isLarge = large.isThreaded = true;
  saveHost(folder / "large", large);
  HostSeed finished{10, VISTREL_BGR24};
  finished.isCalibrated = finished.isFinished = true;
  for (; finished.orientation <= VISTREL_TURNED_270; ++finished.orientation)
    saveHost(folder / ("finished" + std::to_string(finished.orientation)), finished);
  for (uint32_t packing = 0; packing < 6; ++packing)
    for (const uint32_t bits : {8u, 10u, 12u})
      save(folder / ("packing" + std::to_string(packing) + "-" + std::to_string(bits)),
           '\1' + numbers({9, 7, packing, bits, 0}) + '\0' + '\0' + std::string(150, 'a'));
}

void looks(const fs::path& folder) {
  for (const char* const mode : {"auto", "linear", "srgb", "astro"}) save(folder / mode, mode);
  const std::string parts =
      "black=64:64:66:64,white=959,gains=1.8734:1:1.5521,matrix=1.5:-.5:0:0:1:0:0:-.25:1.25,"
      "exposure=1.25,highlights=clip,curve=";
  for (const char* const curve : {"linear", "srgb", "gamma:2.2", "asinh:50"})
    save(folder / (std::string(curve).substr(0, 5) + "-curve"), parts + curve);
  save(folder / "some", "srgb,black=12,exposure=0.0003");
}

// Width, height, channels, bits; then samples and details.
void writers(const fs::path& folder) {
  std::string rest;
  for (int i = 0; i < 900; ++i) rest += static_cast<char>(i * 37 ^ i >> 3);
  for (const char channels : {'\0', '\1', '\2'})
    for (const char bits : {'\0', '\4', '\10'})
      save(folder / fmt::format("{}-{}", int{channels}, int{bits}),
           std::string{9, 7, channels, bits} + rest);
}

}  // namespace

int main(int, char** argv) {
  const fs::path folder = argv[1];
  for (const char* const target : {"pgm", "png", "npy", "tiff", "fits", "gzip", "headerless",
                                   "arriving", "guess", "host", "look", "writers"})
    fs::create_directories(folder / target);
  pgms(folder / "pgm");
  pngs(folder / "png");
  npys(folder / "npy");
  tiffs(folder / "tiff");
  fitses(folder / "fits");
  gzips(folder / "gzip");
  headerless(folder / "headerless");
  headerless(folder / "arriving");
  guesses(folder / "guess");
  hosts(folder / "host");
  looks(folder / "look");
  writers(folder / "writers");
}
