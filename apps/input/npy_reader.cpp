#include <algorithm>
#include <bit>
#include <charconv>
#include <optional>
#include <string_view>

#include "apps/error.h"
#include "apps/input/readers.h"

namespace vistrel::app {
namespace {

constexpr std::string_view kMagic("\x93NUMPY", 6);
constexpr size_t kMostText = 65535;  // bytes of a header

// What the dictionary in the header says.
struct Array {
  std::string type;
  std::optional<bool> isFortran;
  std::optional<std::vector<uint32_t>> shape;
};

// The words of a dictionary as Python prints it.
class Words {
 public:
  explicit Words(std::string_view text) : text_(text) {}

  // Whether this comes next; if so, it is taken.
  bool take(std::string_view word) {
    text_.remove_prefix(std::min(text_.find_first_not_of(" \n"), text_.size()));
    if (!text_.starts_with(word)) return false;
    text_.remove_prefix(word.size());
    return true;
  }
  void expect(std::string_view word) {
    if (!take(word)) throwError(kRejected, "NPY: its header lacks {:?}", word);
  }
  std::string quotedText() {
    expect("'");
    const size_t end = std::min(text_.find('\''), text_.size());
    const std::string word(text_.substr(0, end));
    text_.remove_prefix(end);
    expect("'");
    return word;
  }
  uint32_t number() {
    take("");  // white space
    uint32_t number = 0;
    const auto [rest, error] = std::from_chars(text_.data(), text_.data() + text_.size(), number);
    if (error != std::errc{} || number == 0)
      throwError(kRejected, "NPY: an axis of {:?}: 1 to {} are allowed",
                 text_.substr(0, text_.find_first_of(",) ")), UINT32_MAX);
    text_.remove_prefix(static_cast<size_t>(rest - text_.data()));
    return number;
  }
  bool atEnd() { return take("") && text_.empty(); }

 private:
  std::string_view text_;
};

std::vector<uint32_t> shapeIn(Words& in) {
  std::vector<uint32_t> shape;
  in.expect("(");
  while (!in.take(")")) {
    shape.push_back(in.number());
    if (in.take(",")) continue;
    in.expect(")");
    break;
  }
  return shape;
}

std::string typeIn(Words& in) {
  if (in.take("["))
    throwError(kRejected, "NPY: samples of several fields: uint8 and uint16 are read");
  return in.quotedText();
}

bool isFortranIn(Words& in) {
  if (in.take("True")) return true;
  in.expect("False");
  return false;
}

Array arrayIn(Words in) {
  Array array;
  in.expect("{");
  while (!in.take("}")) {
    const std::string key = in.quotedText();
    in.expect(":");
    if (key == "descr" && array.type.empty())
      array.type = typeIn(in);
    else if (key == "fortran_order" && !array.isFortran)
      array.isFortran = isFortranIn(in);
    else if (key == "shape" && !array.shape)
      array.shape = shapeIn(in);
    else
      throwError(kRejected, "NPY: {:?} in its header: one type, order and shape are expected", key);
    if (in.take(",")) continue;
    in.expect("}");
    break;
  }
  if (!in.atEnd()) throwError(kRejected, "NPY: its header goes on behind the dictionary");
  return array;
}

class NpyReader : public Reader {
 public:
  explicit NpyReader(const Source& source) : source_(source) {
    const std::string text = headerText();
    const Array array = arrayIn(Words(text));
    check(array);
    isBigEndian_ = array.type[0] == '>';
    Description& d = description_;
    d.format = "NPY";
    d.height = array.shape->at(0);
    d.width = array.shape->at(1);
    d.bytesPerSample = static_cast<uint32_t>(array.type[2] - '0');
    d.bits = 8 * d.bytesPerSample;
    d.bitsKnown = d.bits == 8;
    checkSize(d, source, d.bits, source.size() - samplesAt_);
    d.trailing = source.size() - samplesAt_ - bytes();
  }

  void read(uint64_t, void* to) override {
    source_.read(samplesAt_, to, bytes());
    const bool isNative = isBigEndian_ == (std::endian::native == std::endian::big);
    if (description_.bytesPerSample == 2 && !isNative) swapBytes(to, bytes() / 2);
  }

 private:
  size_t bytes() const {
    return size_t{description_.width} * description_.height * description_.bytesPerSample;
  }

  // Sets where it ends.
  std::string headerText() {
    uint8_t head[12] = {};
    if (source_.readSome(0, head, sizeof head) < 10) throwEarlyEnd();
    const uint32_t version = head[6], shorter = head[8] | head[9] * 256u;
    if (version < 1 || version > 3)
      throwError(kRejected, "NPY: version {} of the format: 1 to 3 are read", version);
    const uint32_t longer = shorter | head[10] * 65536u | head[11] * 16777216u;
    const size_t begin = version == 1 ? 10 : 12, size = version == 1 ? shorter : longer;
    if (size > kMostText)
      throwError(kRejected, "NPY: a header of {} bytes: at most {} are allowed", size, kMostText);
    std::string text(size, 0);
    if (source_.readSome(begin, text.data(), size) < size) throwEarlyEnd();
    samplesAt_ = begin + size;
    return text;
  }

  [[noreturn]] static void throwEarlyEnd() {
    throwError(kRejected, "the file ends within the header");
  }

  static void check(const Array& a) {
    if (a.type.empty() || !a.isFortran || !a.shape)
      throwError(kRejected, "NPY: its header lacks the type, order or shape");
    const bool isRead = a.type.size() == 3 && std::string_view("<>|").find(a.type[0]) < 3 &&
                        (a.type.ends_with("u1") || (a.type.ends_with("u2") && a.type[0] != '|'));
    if (!isRead)
      throwError(kRejected, "NPY: samples of type {:?}: uint8 and uint16 are read", a.type);
    if (*a.isFortran)
      throwError(kRejected,
                 "NPY: Fortran order: rows one after the other are expected, as "
                 "numpy.ascontiguousarray() makes them");
    if (const size_t axes = a.shape->size(); axes != 2)
      throwError(kRejected, "NPY: {} ax{}s: 2 are expected, height and width", axes,
                 axes == 1 ? "i" : "e");
  }

  const Source& source_;
  uint64_t samplesAt_ = 0;
  bool isBigEndian_ = false;
};

bool recognisesNpy(const Source&, const std::string& head) { return head.starts_with(kMagic); }

std::unique_ptr<Reader> openNpy(const Source& source, const InputOptions&) {
  return std::make_unique<NpyReader>(source);
}

}  // namespace

const ReaderType kNpy{"NPY", recognisesNpy, openNpy};

}  // namespace vistrel::app
