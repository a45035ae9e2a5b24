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

// Lines of a keyword and its value.
PgmHeader readPam(PnmWords& in) {
  PgmHeader header{};
  header.type = '7';
  uint32_t depth = 0;
  for (std::string word; (word = in.word()) != "ENDHDR";) {
    if (word.empty()) throwError(kRejected, "the file ends within the header");
    if (word == "WIDTH")
      header.width = in.number("width", 1, kMaxSize);
    else if (word == "HEIGHT")
      header.height = in.number("height", 1, kMaxSize);
    else if (word == "DEPTH")
      depth = in.number("depth", 1, kMaxSize);
    else if (word == "MAXVAL")
      header.maxval = in.number("maxval", 1, kMaxMaxval);
    else if (word != "TUPLTYPE")
      throwError(kRejected, "PAM: {:?} is not a line of its header", word);
    in.line();
  }
  in.line();
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
