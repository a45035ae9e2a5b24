// Frames for the tests, from the program or from arithmetic.
import {writeFileSync} from 'node:fs';
import {join} from 'node:path';
import {scratch, vistrel} from './browser.mjs';

// mulberry32: numbers from 0 to 1 that a seed repeats.
export function random(seed) {
  return () => {
    seed = seed + 0x6d2b79f5 | 0;
    let t = Math.imul(seed ^ seed >>> 15, 1 | seed);
    t = t + Math.imul(t ^ t >>> 7, 61 | t) ^ t;
    return ((t ^ t >>> 14) >>> 0) / 2 ** 32;
  };
}

export function scene(name, ...words) {
  const path = join(scratch, name);
  vistrel('scene', ...words, '-o', path);
  return path;
}

export function file(name, bytes) {
  const path = join(scratch, name);
  writeFileSync(path, bytes);
  return path;
}

// A binary PGM of samples that `sampleAt(i)` returns.
export function pgm(name, width, height, bits, sampleAt) {
  const header = Buffer.from(`P5\n${width} ${height}\n${2 ** bits - 1}\n`);
  const samples = Buffer.alloc(width * height * (bits > 8 ? 2 : 1));
  for (let i = 0; i < width * height; ++i)
    if (bits > 8) samples.writeUInt16BE(sampleAt(i), 2 * i);
    else samples[i] = sampleAt(i);
  return file(name, Buffer.concat([header, samples]));
}

// A big-endian TIFF of gray 16-bit samples in one strip.
export function tiff(name, width, height, sampleAt) {
  const fields = [[256, width], [257, height], [258, 16], [259, 1], [262, 1], [273, 0], [277, 1],
                  [278, height], [279, 2 * width * height]];
  const head = Buffer.alloc(8 + 2 + 12 * fields.length + 4);
  fields[5][1] = head.length;
  head.write('MM\0*');
  head.writeUInt32BE(8, 4);
  head.writeUInt16BE(fields.length, 8);
  fields.forEach(([tag, value], i) => {
    const at = 10 + 12 * i;
    head.writeUInt16BE(tag, at);
    head.writeUInt16BE(4, at + 2);  // of 32 bits
    head.writeUInt32BE(1, at + 4);
    head.writeUInt32BE(value, at + 8);
  });
  const samples = Buffer.alloc(2 * width * height);
  for (let i = 0; i < width * height; ++i) samples.writeUInt16BE(sampleAt(i), 2 * i);
  return file(name, Buffer.concat([head, samples]));
}

// NumPy's file of an array of unsigned samples in little-endian order.
export function npy(name, width, height, bytes, sampleAt) {
  const text = `{'descr': '${bytes > 1 ? '<' : '|'}u${bytes}', 'fortran_order': False, 'shape': (${height}, ${width}), }`;
  const head = Buffer.from(`\x93NUMPY\x01\0\0\0${text.padEnd(117)}\n`, 'latin1');
  head.writeUInt16LE(118, 8);
  const samples = Buffer.alloc(bytes * width * height);
  for (let i = 0; i < width * height; ++i) samples.writeUIntLE(sampleAt(i), bytes * i, bytes);
  return file(name, Buffer.concat([head, samples]));
}
