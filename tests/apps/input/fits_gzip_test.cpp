#include "apps/input/fits_gzip.h"

#include "apps/error.h"
#include "tests/apps/input/fits_file.h"
#include "tests/apps/input/gzip.h"
#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

struct FitsGzip : InputTest {
  void expectRejected(const std::string& text, const std::string& file) const {
    scratch.write("in.fits.gz", deflated(file));
    const Finished result = scratch.vistrel("info in.fits.gz");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.err, "vistrel: in.fits.gz: " + text + "\n");
  }
};

std::string extension(const std::string& bytes) {
  auto header = cards(8, {std::to_string(bytes.size())});
  header[0] = card("XTENSION", "'IMAGE   '");
  header.push_back(card("PCOUNT", "0"));
  header.push_back(card("GCOUNT", "1"));
  return fits(header, bytes);
}

TEST_F(FitsGzip, HasTheSamplesOfTheFile) {
  scratch.write("in.fits.gz", deflated(fits(cards(8, {"3", "2"}), "abcdef")));
  EXPECT_EQ(info("in.fits.gz")["format"], "FITS");
  expectSamples("in.fits.gz", 3, 2, 8, [](uint32_t x, uint32_t y) { return 'a' + 3 * y + x; });
  const Finished folder = scratch.vistrel("convert . --phase mono -o " + (scratch / "").string());
  EXPECT_EQ(folder.status, 2) << "it is a frame of the folder";
  std::filesystem::create_directory(scratch / "out");
  EXPECT_EQ(scratch.vistrel("convert . --phase mono -o out").err, "");
  EXPECT_TRUE(std::filesystem::exists(scratch / "out/in.png"));
}

TEST_F(FitsGzip, KeepsWhatLeadsToTheFirstImage) {
  const std::string first = fits(cards(8, {}), "") + extension(std::string(5000, 'x'));
  scratch.write("in.gz", deflated(first + extension(std::string(9000, 'y'))));
  EXPECT_EQ(app::inflatedFits(app::Source(scratch / "in.gz")).bytes,
            std::vector<uint8_t>(first.begin(), first.end()));
}

TEST_F(FitsGzip, BytesAfterItsEndAreRemarked) {
  const std::string file = deflated(fits(cards(8, {"3", "2"}), "abcdef"));
  scratch.write("in.fits.gz", file + "rubbish");
  const std::string said = "vistrel: in.fits.gz: 7 bytes after the last frame are ignored\n";
  EXPECT_EQ(info("in.fits.gz", said)["trailing_bytes"], 7);
}

TEST_F(FitsGzip, EndsWhereItsHeadersSay) {
  const std::string file = fits(cards(8, {"3", "2"}), "abcdef");
  const std::string more = "gzip: it decodes to more than its FITS headers announce";
  expectRejected(more, file + std::string(20'000'000, '\0'));
  expectRejected(more, file + extension("x") + std::string(6000, ' '));
  expectRejected("FITS: a header has no end", "SIMPLE  =" + std::string(20'000'000, ' '));
  const std::string large = fits(cards(8, {"60000", "60000"}), "");
  expectRejected("the file is too short: 3600000000 bytes of samples do not fit its " +
                     std::to_string(deflated(large).size()),
                 large);
  scratch.write("in.fits.gz", deflated(file + "padding") + "xyz");
  const std::string said = "vistrel: in.fits.gz: 10 bytes after the last frame are ignored\n";
  EXPECT_EQ(info("in.fits.gz", said)["width"], 3);
}

TEST_F(FitsGzip, OtherThanFits) {
  expectRejected("a gzip file of something other than FITS: `gzip -dc` and a pipe read those",
                 flat(77));
}

TEST_F(FitsGzip, OneChangedByteAnywhere) {
  auto header = cards(16, {"40", "30"});
  header.push_back(card("BZERO", "32768"));
  std::string samples;
  for (uint32_t i = 0; i < 2400; ++i) samples += static_cast<char>(noise(8)(i, i / 7));
  const std::string file = deflated(fits(header, samples));
  for (size_t at = 10; at < file.size(); at += 61) {  // behind gzip's own header
    std::string changed = file;
    changed[at] ^= 16;
    scratch.write("in.fits.gz", changed);
    EXPECT_EQ(scratch.vistrel("info in.fits.gz").status, 3) << at;
  }
}

}  // namespace
}  // namespace vistrel
