#include "apps/tools/guess/row_periods.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <complex>
#include <numbers>

namespace vistrel::app {

// The points of a file: one for each byte, or for each pair of bytes.
class Points {
 public:
  virtual ~Points() = default;
  virtual size_t count() const = 0;
  virtual std::complex<float> at(size_t i) const = 0;
};

namespace {

using Complex = std::complex<float>;
using Signal = std::vector<Complex>;

// The farthest distance of two rows, and how much of a file is compared at once.
constexpr size_t kMaxChunk = size_t{1} << 18, kMinDistance = 16;
constexpr size_t kChunks = 6, kDistances = 24;

Complex product(Complex a, Complex b) {
  return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// Fourier transform in place, by decimation in frequency: the result is in bit-reversed order.
void transform(Signal& s, const Signal& roots) {
  for (size_t half = s.size() / 2, step = 1; half; half /= 2, step *= 2)
    for (size_t begin = 0; begin < s.size(); begin += 2 * half)
      for (size_t i = 0; i < half; ++i) {
        Complex& a = s[begin + i];
        Complex& b = s[begin + i + half];
        const Complex difference = a - b;
        a += b;
        b = product(difference, roots[i * step]);
      }
}

// The inverse, which takes that order.
void transformBack(Signal& s, const Signal& roots) {
  for (size_t half = 1, step = s.size() / 2; half < s.size(); half *= 2, step /= 2)
    for (size_t begin = 0; begin < s.size(); begin += 2 * half)
      for (size_t i = 0; i < half; ++i) {
        Complex& a = s[begin + i];
        const Complex b = product(s[begin + i + half], std::conj(roots[i * step]));
        s[begin + i + half] = a - b;
        a += b;
      }
}

Signal rootsOf(size_t size) {
  Signal roots(size / 2);
  for (size_t i = 0; i < roots.size(); ++i)
    roots[i] = std::polar(1.0f, static_cast<float>(-2 * std::numbers::pi * static_cast<double>(i) /
                                                   static_cast<double>(size)));
  return roots;
}

// Bytes as points of a circle, on which 255 is next to 0, as in the low bytes of longer samples.
// Equalised: each byte takes as much of the circle as it has of the file.
std::array<Complex, 256> circleOf(const std::vector<uint8_t>& bytes) {
  std::array<size_t, 256> counts{};
  for (const uint8_t byte : bytes) ++counts[byte];
  std::array<Complex, 256> circle;
  size_t below = 0;
  for (size_t i = 0; i < 256; below += counts[i++])
    circle[i] = std::polar(
        1.0f, static_cast<float>(2 * std::numbers::pi *
                                 (static_cast<double>(below) + static_cast<double>(counts[i]) / 2) /
                                 static_cast<double>(bytes.size())));
  return circle;
}

class BytePoints : public Points {
 public:
  explicit BytePoints(const std::vector<uint8_t>& bytes)
      : bytes_(bytes), circle_(circleOf(bytes)) {}
  size_t count() const override { return bytes_.size(); }
  Complex at(size_t i) const override { return circle_[bytes_[i]]; }

 private:
  const std::vector<uint8_t>& bytes_;
  std::array<Complex, 256> circle_;
};

// Both byte orders at once: their correlations add up.
class WordPoints : public Points {
 public:
  explicit WordPoints(const std::vector<uint8_t>& bytes) : bytes_(bytes) {}
  size_t count() const override { return bytes_.size() / 2; }
  Complex at(size_t i) const override {
    const unsigned a = bytes_[2 * i], b = bytes_[2 * i + 1];
    return {std::log2(64.0f + static_cast<float>(a | b << 8)),
            std::log2(64.0f + static_cast<float>(b | a << 8))};
  }

 private:
  const std::vector<uint8_t>& bytes_;
};

// The power spectrum, summed over chunks of the file.
std::vector<float> spectrumOf(const Points& points, const Signal& roots) {
  const size_t size = 2 * roots.size(), span = std::min(size, points.count());
  const size_t chunks = std::min(kChunks, (points.count() + size - 1) / size);
  std::vector<float> spectrum(size);
  for (size_t k = 0; k < chunks; ++k) {
    const size_t at = chunks == 1 ? 0 : (points.count() - span) / (chunks - 1) * k;
    Signal s(size);
    Complex mean = 0;
    for (size_t i = 0; i < span; ++i) mean += s[i] = points.at(at + i);
    mean /= static_cast<float>(span);
    for (size_t i = 0; i < span; ++i) s[i] -= mean;
    transform(s, roots);
    for (size_t i = 0; i < size; ++i) spectrum[i] += std::norm(s[i]);
  }
  return spectrum;
}

// The correlation at all distances, of the spectrum with each amplitude raised to this power.
std::vector<float> correlationOf(const std::vector<float>& spectrum, const Signal& roots,
                                 float power) {
  Signal s(spectrum.size());
  for (size_t i = 0; i < s.size(); ++i) s[i] = std::pow(spectrum[i], power / 2);
  transformBack(s, roots);
  std::vector<float> correlation(s.size() / 2);
  for (size_t i = 0; i < correlation.size(); ++i) correlation[i] = s[i].real();
  return correlation;
}

void divideByDeviation(std::vector<float>& values) {
  double sum = 0;
  for (size_t i = values.size() / 2; i < values.size(); ++i) sum += double(values[i]) * values[i];
  const double deviation = std::sqrt(sum / static_cast<double>(values.size() / 2 + 1)) + 1e-30;
  for (float& value : values) value = static_cast<float>(value / deviation);
}

// The peaks of a correlation, at distances of `step` bytes.
void addPeaks(const std::vector<float>& c, size_t step, std::vector<size_t>& distances) {
  std::vector<size_t> peaks;
  for (size_t i = kMinDistance; i + 1 < c.size(); ++i)
    if (c[i] > 0 && c[i] >= c[i - 1] && c[i] >= c[i + 1]) peaks.push_back(i);
  const size_t count = std::min(peaks.size(), kDistances);
  std::partial_sort(peaks.begin(), peaks.begin() + static_cast<ptrdiff_t>(count), peaks.end(),
                    [&c](size_t a, size_t b) { return c[a] > c[b]; });
  for (size_t i = 0; i < count; ++i)
    if (!std::ranges::count(distances, peaks[i] * step)) distances.push_back(peaks[i] * step);
}

}  // namespace

Recurrence::Recurrence(const std::vector<uint8_t>& bytes) {
  const size_t size = std::min(kMaxChunk, std::bit_ceil(bytes.size()));
  addPoints(BytePoints(bytes), size, 1, ofBytes_);
  addPoints(WordPoints(bytes), size / 2, 2, ofWords_);
}

// Without the amplitudes' squares, peaks are sharper; with them, weak ones stand out from noise.
void Recurrence::addPoints(const Points& points, size_t size, size_t step, std::vector<float>& to) {
  const Signal roots = rootsOf(size);
  const std::vector<float> spectrum = spectrumOf(points, roots);
  to = correlationOf(spectrum, roots, 1);
  divideByDeviation(to);
  addPeaks(to, step, distances_);
  addPeaks(correlationOf(spectrum, roots, 2), step, distances_);
}

double Recurrence::at(size_t distance) const {
  const double ofBytes = distance < ofBytes_.size() ? ofBytes_[distance] : 0;
  if (distance % 2 || distance / 2 >= ofWords_.size()) return ofBytes;
  return std::max<double>(ofBytes, ofWords_[distance / 2]);
}

}  // namespace vistrel::app
