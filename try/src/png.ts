// Gray PNGs of 8 and 16 bits as frames, and pictures as PNGs.
import {decode, encode} from 'fast-png';
import type {Layout} from './protocol.ts';
import type {DecodedFrame} from './tiff.ts';

// The first byte of a chunk before the pixels.
function chunkByte(bytes: Uint8Array, name: string): number | undefined {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  for (let at = 8; at + 12 <= bytes.length; at += 12 + view.getUint32(at)) {
    const type = String.fromCharCode(...bytes.subarray(at + 4, at + 8));
    if (type === name) return bytes[at + 8];
    if (type === 'IDAT') return undefined;
  }
  return undefined;
}

const kBlocks: Record<string, number[]> = {
  rggb: [0, 1, 1, 2], bggr: [2, 1, 1, 0], grbg: [1, 0, 2, 1], gbrg: [1, 2, 0, 1],
};

export function decodePng(bytes: Uint8Array): DecodedFrame {
  const png = decode(bytes);
  if (png.channels !== 1 || png.palette || (png.depth !== 8 && png.depth !== 16))
    throw new Error(`This PNG has ${png.channels} channels of ${png.depth} bits: a frame is gray, of 8 or 16.`);
  const significant = chunkByte(bytes, 'sBIT') ?? png.depth;
  const bits = significant >= 8 ? significant : png.depth;
  const data = png.data as Uint8Array | Uint16Array;
  if (bits < png.depth) data.forEach((sample, i) => { data[i] = sample >> (png.depth - bits); });
  const tags: Record<string, unknown> = {
    format: 'PNG', ImageWidth: [png.width], ImageLength: [png.height], BitsPerSample: [png.depth],
    SignificantBits: [bits],
  };
  const block = kBlocks[png.text?.Phase ?? ''];
  if (block) tags.CFAPattern = block;
  return {tags, samples: new Uint8Array(data.buffer, data.byteOffset, data.byteLength)};
}

export function encodePng(layout: Layout, pixels: Uint8Array): Uint8Array {
  const {width, height, channels, bits} = layout;
  const copy = pixels.slice();
  const data = bits > 8 ? new Uint16Array(copy.buffer) : copy;
  return encode({width, height, channels, depth: bits > 8 ? 16 : 8, data});
}
