// vistrel-quality [KODAK_FOLDER] [CROPS.png]: measures the demosaic algorithms and prints the
// tables of docs/quality.md. With a folder of original pictures, those are measured too; crops show
// generated scenes alone.
#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "apps/pictures/picture.h"
#include "apps/tools/sheet/contact_sheet.h"
#include "tests/quality/algorithms.h"
#include "tests/quality/measures.h"
#include "tests/quality/scenes.h"

namespace vistrel::quality {
namespace {

constexpr uint32_t kSceneBits = 12, kPictureBits = 8;
constexpr double kNoise[] = {0, 0.5, 1, 3, 6, 12};  // percent of full scale
constexpr uint64_t kSeed = 7;

struct Row {
  std::string name;
  std::vector<std::string> cells;
};

void print(const Row& row) {
  fmt::print("| {} |", row.name);
  for (const std::string& cell : row.cells) fmt::print(" {} |", cell);
  fmt::print("\n");
}

void printHead(const std::string& name, std::vector<std::string> cells) {
  print({name, std::move(cells)});
  fmt::print("|---|");
  for (size_t i = 0; i < kAlgorithms.size(); ++i) fmt::print("---|");
  fmt::print("\n");
}

std::vector<std::string> namesOfAlgorithms() {
  std::vector<std::string> names;
  for (const Algorithm& algorithm : kAlgorithms)
    names.push_back(fmt::format("`{}`", algorithm.name));
  return names;
}

// A cell for each algorithm.
template <class CellOf>
Row rowOf(const std::string& name, const CellOf& cellOf) {
  Row row{name, {}};
  for (size_t i = 0; i < kAlgorithms.size(); ++i) row.cells.push_back(cellOf(i));
  return row;
}

// By algorithm.
using Results = std::array<Measures, std::tuple_size_v<decltype(kAlgorithms)>>;

Results measureAll(const Truth& truth, const Planes& seen, uint32_t bits) {
  Results results;
  for (size_t i = 0; i < results.size(); ++i)
    results[i] = truth.of(demosaiced(seen, bits, kAlgorithms[i]));
  return results;
}

template <class Value>
double meanOf(const std::vector<Results>& all, size_t algorithm, const Value& value) {
  double sum = 0;
  for (const Results& results : all) sum += value(results[algorithm]);
  return sum / static_cast<double>(all.size());
}

void printMeans(const std::string& name, const std::vector<Results>& all) {
  print(rowOf(name, [&all](size_t i) {
    return fmt::format("{:.2f} dB, {:.2f}, {:.4f}, {:.1f} %",
                       meanOf(all, i, [](const Measures& m) { return m.cpsnr; }),
                       meanOf(all, i, [](const Measures& m) { return m.difference; }),
                       meanOf(all, i, [](const Measures& m) { return m.ssim; }),
                       meanOf(all, i, [](const Measures& m) { return m.zipper; }));
  }));
}

Planes readOriginal(const std::filesystem::path& path) {
  const Image image = app::readPng(path);
  Planes planes(static_cast<int>(image.layout.width), static_cast<int>(image.layout.height));
  for (size_t i = 0; i < image.pixels.size(); ++i)
    planes.channels[2 - i % 3][i / 3] = image.pixels[i] / 255.0f;
  return planes;
}

void printPictures(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  std::vector<Results> all;
  printHead("CPSNR in dB, largest distance", namesOfAlgorithms());
  for (const std::filesystem::path& file : files) {
    const Planes original = readOriginal(file);
    all.push_back(measureAll(Truth(original, Light::kDisplay), original, kPictureBits));
    print(rowOf(file.stem(), [&](size_t i) {
      return fmt::format("{:.2f}, {:.0f}", all.back()[i].cpsnr, all.back()[i].worst);
    }));
  }
  printMeans("mean", all);
}

void printScenes(const std::vector<NamedScene>& scenes) {
  fmt::print("\n");
  printHead("CPSNR, distance", namesOfAlgorithms());
  for (const NamedScene& scene : scenes) {
    const Results results = measureAll(Truth(scene.light, Light::kLinear), scene.light, kSceneBits);
    print(rowOf(fmt::format("{}: {}", scene.name, scene.content), [&results](size_t i) {
      return fmt::format("{:.2f} dB, {:.2f}", results[i].cpsnr, results[i].difference);
    }));
  }
}

void printNoise(const std::vector<NamedScene>& scenes) {
  fmt::print("\n");
  printHead("noise", namesOfAlgorithms());
  std::vector<Truth> truths;
  for (const NamedScene& scene : scenes) truths.emplace_back(scene.light, Light::kLinear);
  for (const double percent : kNoise) {
    std::vector<Results> all;
    for (size_t i = 0; i < scenes.size(); ++i)
      all.push_back(
          measureAll(truths[i], withNoise(scenes[i].light, percent / 100, kSeed), kSceneBits));
    printMeans(fmt::format("{} %", percent), all);
  }
}

void printFalseColour(const Planes& rings) {
  fmt::print("\n");
  printHead("noise", namesOfAlgorithms());
  for (const double percent : kNoise) {
    const Planes seen = withNoise(rings, percent / 100, kSeed);
    print(rowOf(fmt::format("{} %", percent), [&seen](size_t i) {
      const Chroma chroma = chromaWithin(demosaiced(seen, kSceneBits, kAlgorithms[i]),
                                         kGrayUpTo / kRingsPerPixel, Light::kLinear);
      return fmt::format("{:.2f}, {:.0f}", chroma.mean, chroma.largest);
    }));
  }
}

void printPlates(const std::vector<NamedScene>& plates) {
  fmt::print("\n");
  printHead("CPSNR, largest distance", namesOfAlgorithms());
  for (const double percent : {0, 3}) {
    for (const NamedScene& plate : plates) {
      const Results results = measureAll(Truth(plate.light, Light::kLinear),
                                         withNoise(plate.light, percent / 100, kSeed), kSceneBits);
      print(rowOf(fmt::format("{}, {} %", plate.name, percent), [&results](size_t i) {
        return fmt::format("{:.2f} dB, {:.0f}", results[i].cpsnr, results[i].worst);
      }));
    }
  }
}

// As sheets take it: red, green, blue.
Image shown(const Planes& picture) {
  Image image = displayed(picture, Light::kLinear);
  for (size_t i = 0; i < image.pixels.size(); i += 3)
    std::swap(image.pixels[i], image.pixels[i + 2]);
  return image;
}

// Part of a scene, through each algorithm.
app::Strip stripOf(const NamedScene& scene, double percent, const vistrel_region& part) {
  const Planes seen = withNoise(scene.light, percent / 100, kSeed);
  app::Strip strip{fmt::format("{}, noise {} %", scene.name, percent), {}};
  strip.cells.push_back({"truth", shown(scene.light), part});
  for (const Algorithm& algorithm : kAlgorithms)
    strip.cells.push_back(
        {std::string(algorithm.name), shown(demosaiced(seen, kSceneBits, algorithm)), part});
  return strip;
}

void writeCrops(const std::vector<NamedScene>& scenes, const std::filesystem::path& path) {
  const auto scene = [&scenes](std::string_view name) {
    return *std::ranges::find(scenes, name, &NamedScene::name);
  };
  const std::vector<app::Strip> strips{stripOf(scene("rings"), 0, {230, 120, 96, 64}),
                                       stripOf(scene("text"), 0, {4, 60, 96, 64}),
                                       stripOf(scene("hues"), 0, {200, 200, 96, 64}),
                                       stripOf(scene("foliage"), 0, {20, 250, 96, 64}),
                                       stripOf(scene("chart"), 3, {150, 180, 96, 64})};
  app::AtomicFile file(path);
  app::writePng(app::sheetOf(strips, 3).image(), {}, file);
  file.commit();
}

}  // namespace
}  // namespace vistrel::quality

int main(int count, char** arguments) {
  using namespace vistrel::quality;
  const std::vector<NamedScene> scenes = renderScenes();
  if (count > 1 && *arguments[1]) printPictures(arguments[1]);
  printScenes(scenes);
  printNoise(scenes);
  for (const NamedScene& scene : scenes)
    if (scene.name == "rings") printFalseColour(scene.light);
  printPlates(renderPlates());
  if (count > 2) writeCrops(scenes, arguments[2]);
}
