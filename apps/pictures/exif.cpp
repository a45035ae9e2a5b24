#include "apps/pictures/exif.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace vistrel::app {

const char* const kSoftware = "vistrel " VISTREL_PROGRAM_VERSION;

namespace {

enum FieldType : uint16_t { kAscii = 2, kShort = 3, kLong = 4, kRational = 5, kUndefined = 7 };

void put(std::string& to, uint64_t number, int bytes) {
  for (int i = 0; i < bytes; ++i) to += static_cast<char>(number >> 8 * i);
}

// Fields in ascending order of their tags.
class Directory {
 public:
  void text(uint16_t tag, const std::string& text) { add(tag, kAscii, 1, text + '\0'); }
  void text(uint16_t tag, const std::optional<std::string>& value) {
    if (value) text(tag, *value);
  }
  void undefined(uint16_t tag, const std::string& bytes) { add(tag, kUndefined, 1, bytes); }
  void number(uint16_t tag, uint16_t value) { numbers(tag, kShort, 2, value); }
  void longNumber(uint16_t tag, uint32_t value) { numbers(tag, kLong, 4, value); }
  void rational(uint16_t tag, const std::optional<double>& value);

  // Of the directory and what doesn't fit its fields.
  size_t bytes() const { return directoryBytes() + behind().size(); }
  void appendTo(std::string& block) const;

 private:
  struct Field {
    uint16_t tag;
    FieldType type;
    uint32_t count;
    std::string bytes;
  };
  void add(uint16_t tag, FieldType type, size_t size, const std::string& bytes) {
    fields_.push_back({tag, type, static_cast<uint32_t>(bytes.size() / size), bytes});
  }
  void numbers(uint16_t tag, FieldType type, int size, uint32_t value) {
    std::string bytes;
    put(bytes, value, size);
    add(tag, type, static_cast<size_t>(size), bytes);
  }

  size_t directoryBytes() const { return 2 + 12 * fields_.size() + 4; }
  std::string behind() const;

  std::vector<Field> fields_;
};

// Short exposures as 1/N, other numbers in millionths or, if they are large, as integers.
void Directory::rational(uint16_t tag, const std::optional<double>& value) {
  if (!value) return;
  constexpr double kMillion = 1000000, kLargestWord = 4294967295;
  const double inverse = std::round(1 / *value);
  const bool isFraction = *value < 1 && std::abs(inverse * *value - 1) < 1e-6;
  const double steps = isFraction ? inverse : *value * kMillion <= kLargestWord ? kMillion : 1;
  const double part = isFraction ? 1 : std::min(std::round(*value * steps), kLargestWord);
  std::string bytes;
  put(bytes, static_cast<uint64_t>(part), 4);
  put(bytes, static_cast<uint64_t>(std::min(steps, kLargestWord)), 4);
  add(tag, kRational, 8, bytes);
}

bool fitsField(const std::string& bytes) { return bytes.size() <= 4; }

// Values begin at even offsets.
std::string padded(std::string bytes, size_t unit) {
  while (bytes.size() % unit) bytes += '\0';
  return bytes;
}

std::string Directory::behind() const {
  std::string all;
  for (const Field& field : fields_)
    if (!fitsField(field.bytes)) all += padded(field.bytes, 2);
  return all;
}

void Directory::appendTo(std::string& block) const {
  size_t at = block.size() + directoryBytes();
  put(block, fields_.size(), 2);
  for (const Field& field : fields_) {
    put(block, field.tag, 2);
    put(block, field.type, 2);
    put(block, field.count, 4);
    if (fitsField(field.bytes)) {
      block += padded(field.bytes, 4);
    } else {
      put(block, at, 4);
      at += padded(field.bytes, 2).size();
    }
  }
  put(block, 0, 4);  // there is no next directory
  block += behind();
}

Directory exposureOf(const vistrel_layout& l, const PictureDetails& details) {
  constexpr uint16_t kSrgb = 1, kUncalibrated = 65535;
  const Shot& shot = details.shot;
  Directory d;
  d.rational(0x829A, shot.exposureTime);
  d.rational(0x829D, shot.aperture);
  if (shot.iso)
    d.number(0x8827, static_cast<uint16_t>(std::clamp(std::round(*shot.iso), 1.0, 65535.0)));
  d.undefined(0x9000, "0230");  // version
  if (shot.date) d.text(0x9003, exifDate(*shot.date));
  d.undefined(0x9101, std::string("\1\2\3\0", 4));  // components: Y, Cb, Cr
  d.rational(0x920A, shot.focalLength);
  d.undefined(0xA000, "0100");  // version of another part of the standard
  d.number(0xA001, details.encoding.kind == Encoding::kSrgb ? kSrgb : kUncalibrated);
  d.longNumber(0xA002, l.width);
  d.longNumber(0xA003, l.height);
  return d;
}

// Everything before the pointer to the second directory.
Directory pictureFields(const PictureDetails& details) {
  constexpr uint16_t kUpright = 1, kInch = 2, kCentred = 1;
  constexpr double kUsualResolution = 72;
  const Shot& shot = details.shot;
  Directory d;
  if (!details.command.empty()) d.text(0x010E, details.command);
  d.text(0x010F, shot.make);
  d.text(0x0110, shot.model);
  d.number(0x0112, kUpright);
  d.rational(0x011A, kUsualResolution);
  d.rational(0x011B, kUsualResolution);
  d.number(0x0128, kInch);
  d.text(0x0131, std::string(kSoftware));
  if (shot.date) d.text(0x0132, exifDate(*shot.date));
  d.number(0x0213, kCentred);
  return d;
}

}  // namespace

bool isAscii(const std::string& text) {
  return std::ranges::all_of(text, [](unsigned char c) { return c < 0x80; });
}

std::string exifDate(const std::string& date) {
  std::string text = date;
  std::ranges::replace(text, '-', ':');
  std::ranges::replace(text, 'T', ' ');
  return text;
}

std::string exifOf(const vistrel_layout& l, const PictureDetails& details) {
  constexpr size_t kHeader = 8, kField = 12;
  std::string block("II*\0\x08\0\0\0", kHeader);
  Directory first = pictureFields(details);
  first.longNumber(0x8769, static_cast<uint32_t>(kHeader + first.bytes() + kField));
  first.appendTo(block);
  exposureOf(l, details).appendTo(block);
  return block;
}

}  // namespace vistrel::app
