#include "apps/commands/commands.h"

#include <cmath>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "apps/batch/jobs.h"
#include "apps/error.h"
#include "apps/names/phase_names.h"
#include "apps/options/options.h"
#include "apps/pictures/picture.h"
#include "apps/progress/progress.h"
#include "apps/tools/report/plot.h"

namespace vistrel::app {
namespace {

constexpr const char* kReportExamples = R"(Example:
  vistrel report --reference kodak/*.png -o . --json scores.json

Samples every reference image as sensors of the four Bayer phases would,
demosaics the samples by every algorithm, and compares the results with the
reference image. CPSNR is 10 log10(255^2 / E), where E is the squared error
averaged over all pixels and channels; SSIM is the mean over the channels
(Gaussian window of 11 x 11, standard deviation 1.5). Ten pixels at each border
are excluded. Both are means over the phases; ns/pixel is the fastest of twelve
conversions, three in each phase, on one thread.

Photographs say little about fine coloured patterns and noisy frames:
`vistrel algorithms --help` says which algorithms suit those.)";

constexpr const char* kPlotName = "report.png";

struct ReportOptions {
  std::vector<std::string> references;
  std::vector<AlgorithmChoice> algorithms;
  std::string folder, json;
};

Evaluation evaluatePicture(const std::string& path,
                           const std::vector<AlgorithmChoice>& algorithms) {
  const Image reference = readPng(path);
  checkReference(reference);
  return {std::filesystem::path(path).stem(), reference.layout.width, reference.layout.height,
          evaluateAll(reference, algorithms)};
}

void printScores(const std::string& head, const std::vector<AlgorithmChoice>& algorithms,
                 const std::vector<Score>& scores) {
  fmt::print("{:<24} {:>8} {:>8} {:>9}\n", head, "CPSNR dB", "SSIM", "ns/pixel");
  for (size_t i = 0; i < algorithms.size(); ++i)
    fmt::print("  {:<22} {:8.2f} {:8.4f} {:9.2f}\n", labelOf(algorithms[i]), scores[i].cpsnr,
               scores[i].ssim, scores[i].nsPerPixel);
}

nlohmann::ordered_json jsonOf(const std::vector<AlgorithmChoice>& algorithms,
                              const std::vector<Score>& scores) {
  auto list = nlohmann::ordered_json::array();
  for (size_t i = 0; i < algorithms.size(); ++i) {
    nlohmann::ordered_json score{{"algorithm", labelOf(algorithms[i])},
                                 {"cpsnr_db", nullptr},  // if the pictures are equal
                                 {"ssim", scores[i].ssim},
                                 {"ns_per_pixel", scores[i].nsPerPixel}};
    if (std::isfinite(scores[i].cpsnr)) score["cpsnr_db"] = scores[i].cpsnr;
    list.push_back(score);
  }
  return list;
}

void writeJson(const std::string& path, const std::vector<Evaluation>& evaluations,
               const std::vector<AlgorithmChoice>& algorithms) {
  nlohmann::ordered_json json{{"border_pixels", kBorder},
                              {"phases", nlohmann::ordered_json::array()},
                              {"pictures", nlohmann::ordered_json::array()},
                              {"mean", jsonOf(algorithms, meanOf(evaluations))}};
  for (uint32_t phase = 0; phase < kBayerPhases; ++phase)
    json["phases"].push_back(vistrel_phase_name(phase));
  for (const Evaluation& t : evaluations)
    json["pictures"].push_back({{"name", t.name},
                                {"width", t.width},
                                {"height", t.height},
                                {"scores", jsonOf(algorithms, t.scores)}});
  AtomicFile file(path);
  const std::string text =
      json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  if (std::fputs((text + "\n").c_str(), file.stream()) < 0)
    file.throwWriteError(std::strerror(errno));
  file.commit();
}

void writePlot(const std::string& folder, const std::vector<Evaluation>& evaluations,
               const std::vector<AlgorithmChoice>& algorithms) {
  AtomicFile file(std::filesystem::path(folder) / kPlotName);
  writePng(plotOf(evaluations, algorithms).image(), {}, file);
  file.commit();
}

void checkFiles(const ReportOptions& o) {
  RunFiles files;
  files.addInputs(o.references);
  if (!o.folder.empty()) {
    checkIsFolder(o.folder);
    if (!std::filesystem::exists(o.folder))
      throwError(kInputOutput, "-o {}: there is no such folder", o.folder);
    files.addWritten("-o", std::filesystem::path(o.folder) / kPlotName);
  }
  if (!o.json.empty()) files.addWritten("--json", o.json);
}

ExitStatus run(const ReportOptions& o) {
  checkFiles(o);
  const std::vector<AlgorithmChoice> algorithms = orAll(o.algorithms);
  std::vector<Evaluation> evaluations;
  Progress progress(o.references.size());
  ExitStatusSum sum;
  for (const std::string& path : o.references) {
    const Outcome outcome =
        attempt([&] { evaluations.push_back(evaluatePicture(path, algorithms)); });
    if (outcome.status != kDone) progress.say(fmt::format("{}: {}", path, outcome.text));
    sum.add(outcome.status);
    progress.made();
  }
  for (const Evaluation& evaluation : evaluations)
    printScores(evaluation.name, algorithms, evaluation.scores);
  if (evaluations.size() > 1)
    printScores(fmt::format("mean of {}", evaluations.size()), algorithms, meanOf(evaluations));
  if (evaluations.empty()) return sum.status();
  if (!o.json.empty()) writeJson(o.json, evaluations, algorithms);
  if (!o.folder.empty()) writePlot(o.folder, evaluations, algorithms);
  return sum.status();
}

}  // namespace

void addReportCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand(
      "report", "Score how close each algorithm comes to reference images, and time it");
  const auto o = std::make_shared<ReportOptions>();
  command->add_option("--reference", o->references, "Full-colour reference images: PNG, 3 x 8 bits")
      ->required()
      ->type_name("IMAGE.png");
  addAlgorithmsOption(*command, o->algorithms);
  command->add_option("-o,--output", o->folder, "Folder for the plot, report.png")
      ->type_name("DIR");
  aFile(command->add_option("--json", o->json, "File for the scores as JSON"))->type_name("FILE");
  command->footer(kReportExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
