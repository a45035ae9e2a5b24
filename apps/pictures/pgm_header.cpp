#include "apps/pictures/pgm_header.h"

#include <limits>
#include <string>

#include "apps/error.h"
#include "apps/pictures/pnm_words.h"

namespace vistrel::app {
namespace {

constexpr uint32_t kMaxSize = std::numeric_limits<uint32_t>::max(), kMaxMaxval = 65535;

uint32_t headerNumber(PnmWords& in, const char* name, uint32_t max) {
  const uint32_t number = in.number(name, 1, max);
  if (in.peek() == PnmWords::kEnd) throwError(kRejected, "the file ends with the {}", name);
  return number;
}

PgmHeader readNumbers(PnmWords& in, char type) {
  PgmHeader header{};
  header.type = type;
  header.width = headerNumber(in, "width", kMaxSize);
  header.height = headerNumber(in, "height", kMaxSize);
  header.maxval = headerNumber(in, "maxval", kMaxMaxval);
  in.skipOne();  // the next byte is a sample
  header.phase = in.phase();
  header.samplesAt = in.at();
  return header;
}

// The value of a line of a PAM, which has to be given once.
void setNumber(const char* name, const std::string& text, uint32_t max, uint32_t& to) {
  if (to) throwError(kRejected, "PAM: its header gives {} twice", name);
  to = parseNumber(name, text, 1, max);
}

// Lines of a keyword and its value, of which one may be empty or a comment.
PgmHeader readPam(PnmWords& in) {
  constexpr const char* kSpace = " \t\v\f\r";
  PgmHeader header{};
  header.type = '7';
  uint32_t depth = 0;
  in.line();  // the rest of the first one
  for (;;) {
    std::string line = in.line();
    line.erase(line.find_last_not_of(kSpace) + 1).erase(0, line.find_first_not_of(kSpace));
    if (line == "ENDHDR") break;
    const std::string keyword = line.substr(0, line.find_first_of(kSpace));
    const size_t value = line.find_first_not_of(kSpace, keyword.size());
    const std::string text = value == line.npos ? "" : line.substr(value);
    if (keyword == "WIDTH")
      setNumber("WIDTH", text, kMaxSize, header.width);
    else if (keyword == "HEIGHT")
      setNumber("HEIGHT", text, kMaxSize, header.height);
    else if (keyword == "DEPTH")
      setNumber("DEPTH", text, kMaxSize, depth);
    else if (keyword == "MAXVAL")
      setNumber("MAXVAL", text, kMaxMaxval, header.maxval);
    else if (!line.empty() && line[0] != '#' && keyword != "TUPLTYPE")
      throwError(kRejected, "PAM: {:?} is not a line of its header", keyword);
  }
  if (!header.width || !header.height || !depth || !header.maxval)
    throwError(kRejected, "PAM: its header lacks WIDTH, HEIGHT, DEPTH or MAXVAL");
  if (depth != 1)
    throwError(kRejected, "PAM: {} samples a pixel: 1 is expected of a mosaic or gray", depth);
  header.samplesAt = in.at();
  return header;
}

}  // namespace

bool beginsPnm(const Source& source, uint64_t at, char type) {
  char magic[2];
  return source.readSome(at, magic, 2) == 2 && magic[0] == 'P' && magic[1] == type;
}

PgmHeader readGrayHeader(const Source& source, uint64_t at) {
  PnmWords in(source, at);
  in.get();
  const auto type = static_cast<char>(in.get());
  if (type == '2' || type == '5') return readNumbers(in, type);
  if (type == '7') return readPam(in);
  throwError(kRejected,
             "its type is P{}; of the PNM family this program reads PGM, P2 and P5, and gray PAM, "
             "P7",
             type);
}

PgmHeader readPpmHeader(const Source& source) {
  PnmWords in(source, 2);
  return readNumbers(in, '6');
}

}  // namespace vistrel::app
