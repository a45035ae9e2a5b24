// Uncompressed TIFF and DNG: the tags of the frame by their names, and its samples.
import UTIF from 'utif2';

export interface DecodedFrame {
  tags: Record<string, unknown>;
  samples: Uint8Array;
}

type Directory = Record<string, number[] | string[]> & {subIFD?: Directory[]};

const kTags: Record<string, number> = {
  ImageWidth: 256, ImageLength: 257, BitsPerSample: 258, Orientation: 274,
  CFAPattern: 33422, BlackLevelRepeatDim: 50713, BlackLevel: 50714, BlackLevelDeltaH: 50715,
  BlackLevelDeltaV: 50716, WhiteLevel: 50717, DefaultCropOrigin: 50719, DefaultCropSize: 50720,
  ColorMatrix1: 50721, ColorMatrix2: 50722, CameraCalibration1: 50723, CameraCalibration2: 50724,
  AnalogBalance: 50727, AsShotNeutral: 50728, AsShotWhiteXY: 50729, BaselineExposure: 50730,
  CalibrationIlluminant1: 50778, CalibrationIlluminant2: 50779,
};
const kMosaic = 32803;

// The program reads fractions as 32-bit floats, and takes the shortest decimal that is rounded to one.
function decimal(fraction: number): number {
  const float = Math.fround(fraction);
  for (let digits = 1; digits < 9; ++digits) {
    const short = Number(fraction.toPrecision(digits));
    if (Math.fround(short) === float) return short;
  }
  return float;
}

function numberOf(read: unknown): number {
  if (Array.isArray(read)) return decimal(read[0] / read[1]);
  return Number.isInteger(Number(read)) ? Number(read) : decimal(Number(read));
}

function value(directory: Directory, tag: number, otherwise: number): number {
  return Number(directory[`t${tag}`]?.[0] ?? otherwise);
}

function frameIn(main: Directory[]): Directory {
  const all = main.flatMap((directory) => [directory, ...(directory.subIFD ?? [])])
                  .filter((directory) => !(value(directory, 254, 0) & 1));
  const found = all.find((directory) => value(directory, 262, 1) === kMosaic) ??
      all.find((directory) => value(directory, 262, 1) === 1 && value(directory, 277, 1) === 1);
  if (!found) throw new Error('This TIFF holds neither a mosaic nor gray samples.');
  return found;
}

function check(frame: Directory): void {
  const bits = value(frame, 258, 1), compression = value(frame, 259, 1);
  if (compression !== 1)
    throw new Error('This page reads TIFF and DNG without compression only; the program reads more.');
  if (bits !== 8 && bits !== 16)
    throw new Error(`This page reads TIFF of 8 or 16 bits a sample, not of ${bits}; the program reads more.`);
  if (frame.t50712 || frame.t322 || value(frame, 277, 1) !== 1 || value(frame, 339, 1) !== 1)
    throw new Error('This page doesn\u2019t read TIFFs with tables, tiles, several samples a pixel or real numbers; the program does.');
}

// The rows of the active area, in the byte order of this machine.
function samplesOf(bytes: Uint8Array, frame: Directory, isBig: boolean): Uint8Array {
  const width = value(frame, 256, 0), height = value(frame, 257, 0);
  const size = value(frame, 258, 8) / 8;
  const [top, left, bottom, right] = (frame.t50829 as number[]) ?? [0, 0, height, width];
  const strips = frame.t273 as number[], perStrip = value(frame, 278, height);
  if (!(top >= 0 && left >= 0 && bottom <= height && right <= width && top < bottom && left < right))
    throw new Error('The active area of this TIFF exceeds its image.');
  const rowBytes = (right - left) * size;
  const samples = new Uint8Array(rowBytes * (bottom - top));
  for (let y = top; y < bottom; ++y) {
    const strip = strips[Math.floor(y / perStrip)];
    const at = strip + ((y % perStrip) * width + left) * size;
    if (!(at + rowBytes <= bytes.length)) throw new Error('The file is too short: samples are missing.');
    samples.set(bytes.subarray(at, at + rowBytes), (y - top) * rowBytes);
  }
  if (isBig && size === 2)
    for (let i = 0; i < samples.length; i += 2)
      [samples[i], samples[i + 1]] = [samples[i + 1], samples[i]];
  frame.t256 = [right - left];
  frame.t257 = [bottom - top];
  return samples;
}

export function decodeTiff(bytes: Uint8Array): DecodedFrame {
  const main = UTIF.decode(bytes.buffer as ArrayBuffer) as unknown as Directory[];
  const frame = frameIn(main);
  check(frame);
  const samples = samplesOf(bytes, frame, bytes[0] === 0x4d);
  const tags: Record<string, unknown> = {format: main[0].t50706 ? 'DNG' : 'TIFF'};
  const software = main[0].t305?.[0];
  if (software) tags.Software = String(software);
  for (const [name, tag] of Object.entries(kTags)) {
    const numbers = frame[`t${tag}`] ?? main[0][`t${tag}`];
    if (numbers) tags[name] = Array.from(numbers as unknown[], numberOf);
  }
  return {tags, samples};
}
