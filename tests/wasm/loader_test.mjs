// node loader_test.mjs FOLDER: loads both modules from the folder and converts with them. Expected
// values come from the definitions.
import assert from 'node:assert/strict';
import {pathToFileURL} from 'node:url';

const {loadVistrel, VistrelError} = await import(`${pathToFileURL(process.argv[2])}/vistrel.mjs`);

async function loadWithoutVectors() {
  const validate = WebAssembly.validate;
  WebAssembly.validate = () => false;
  try {
    return await loadVistrel();
  } finally {
    WebAssembly.validate = validate;
  }
}

const width = 40, height = 24;

function frameOf(sampleAt, more = {}) {
  const Samples = more.bits > 8 ? Uint16Array : Uint8Array;
  const samples = Samples.from({length: width * height},
                               (_, i) => sampleAt(i % width, Math.floor(i / width)));
  return {samples, width, height, ...more};
}

// Means of neighbours continue a slope.
function convertsSlope(vistrel) {
  const slope = (x, y) => 2 * x + 6 * y;
  const image = vistrel.convert(frameOf(slope, {phase: 'rggb'}), {format: 'RGB24'});
  assert.deepEqual([image.width, image.height, image.channels, image.bits], [width, height, 3, 8]);
  for (let y = 3; y < height - 3; ++y)
    for (let x = 3; x < width - 3; ++x)
      for (let c = 0; c < 3; ++c)
        assert.equal(image.pixels[3 * (y * width + x) + c], slope(x, y), `pixel ${x}, ${y}`);
}

// Samples of 12 bits, kept; then packed by PFNC: the low byte, four bits of each, the high byte.
function convertsPackedSamples(vistrel) {
  const sampleAt = (x, y) => (x * 97 + y * 389) % 4096;
  const mono = {bits: 12, phase: 'mono'};
  const plain = frameOf(sampleAt, mono);
  const image = vistrel.convert(plain, {format: 'MONO16'});
  assert.deepEqual(image.pixels, plain.samples);
  const bytes = [];
  for (let i = 0; i < plain.samples.length; i += 2) {
    const [a, b] = plain.samples.slice(i, i + 2);
    bytes.push(a & 255, a >> 8 | (b & 15) << 4, b >> 4);
  }
  const packed = {...plain, samples: Uint8Array.from(bytes), packing: 'pfnc'};
  assert.deepEqual(vistrel.convert(packed, {format: 'MONO16'}).pixels, plain.samples);
}

// IEC 61966-2-1
const srgb = (x) => x <= 0.0031308 ? 12.92 * x : 1.055 * x ** (1 / 2.4) - 0.055;

function finishes(vistrel) {
  const frame = frameOf((x, y) => (x + y * width) % 256, {phase: 'mono'});
  const finish = {transfer: vistrel.makeTransfer('srgb')};
  const {pixels} = vistrel.convert(frame, {format: 'MONO8', finish});
  frame.samples.forEach((sample, i) => {
    const light = Math.round(65535 * srgb(sample / 255));
    assert.equal(pixels[i], Math.floor((light + 128) / 257), `sample ${sample}`);
  });
}

// Red is twice as bright as the others.
function measuresGains(vistrel) {
  const frame = frameOf((x, y) => x % 2 || y % 2 ? 60 : 120, {phase: 'rggb'});
  assert.deepEqual(vistrel.measureGains(frame), [4096, 8192, 8192]);
}

function rejects(vistrel) {
  const frame = frameOf(() => 0, {phase: 'rggb'});
  const convert = (conversion) => () => vistrel.convert(frame, conversion);
  assert.throws(convert({binning: 5}), (e) => e instanceof VistrelError && /binning 5/.test(e));
  assert.throws(convert({algorithm: 'best'}), (e) => e instanceof VistrelError && /best/.test(e));
  assert.throws(convert({bining: 2}), TypeError);
  assert.throws(convert({gains: [1, 2]}), TypeError);
}

// Frames that are large enough to make the memory grow.
function needsNoFixedMemory(vistrel) {
  const side = 3000;
  const frame = {samples: new Uint8Array(side * side).fill(77), width: side, height: side,
                 phase: 'gbrg'};
  assert.ok(vistrel.convert(frame, {format: 'RGBA32'}).pixels.every((v, i) => v === (i % 4 < 3 ? 77 : 255)));
}

function sameImages(plain, simd) {
  const frame = frameOf((x, y) => (x * 7919 + y * 104729 + x * y * 31) % 1024,
                        {bits: 10, phase: 'grbg'});
  for (const algorithm of ['bilinear', 'vng', 'ahd', 'directional']) {
    const images = [plain, simd].map((v) => v.convert(frame, {format: 'BGR48', algorithm}).pixels);
    assert.deepEqual(images[0], images[1], algorithm);
  }
}

const plain = await loadWithoutVectors(), simd = await loadVistrel();
assert.deepEqual([plain.module, simd.module], ['plain', 'simd']);
for (const vistrel of [plain, simd])
  for (const test of [convertsSlope, convertsPackedSamples, finishes, measuresGains, rejects,
                      needsNoFixedMemory])
    test(vistrel);
sameImages(plain, simd);
console.log('both modules passed');
