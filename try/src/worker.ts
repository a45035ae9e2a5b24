// Converts frames: calls the engine, and makes bitmaps of its pixels.
import {Engine, Purpose} from './engine.ts';
import {decodePng, encodePng} from './png.ts';
import type {Algorithm, Converted, FrameInfo, Functions, Layout, Place, Plan, Probe, Reply, Request, Scene, Selftest, Tile, Guess} from './protocol.ts';
import {decodeTiff} from './tiff.ts';

const kTileSize = 512, kSmaller = 4;
const kDng = Uint8Array.of(0x49, 0x49, 42, 0);

let engine: Engine;

function rgbaOf(layout: Layout, pixels: Uint8Array): Uint8ClampedArray {
  if (layout.channels === 4) return new Uint8ClampedArray(pixels);
  const rgba = new Uint32Array(pixels.length);
  for (let i = 0; i < pixels.length; ++i) rgba[i] = 0xff000000 | pixels[i] * 0x10101;
  return new Uint8ClampedArray(rgba.buffer);
}

async function tilesOf(layout: Layout, pixels: Uint8Array, top: number): Promise<Tile[]> {
  const {width, height} = layout;
  const strip = new ImageData(rgbaOf(layout, pixels), width, height);
  const tiles: Promise<Tile>[] = [];
  for (let x = 0; x < width; x += kTileSize)
    tiles.push(tileOf(strip, x, top, Math.min(kTileSize, width - x), height));
  return Promise.all(tiles);
}

async function tileOf(strip: ImageData, x: number, y: number, width: number, height: number): Promise<Tile> {
  const full = await createImageBitmap(strip, x, 0, width, height);
  const small = await createImageBitmap(full, {
    resizeWidth: Math.max(1, Math.ceil(width / kSmaller)),
    resizeHeight: Math.max(1, Math.ceil(height / kSmaller)), resizeQuality: 'medium'});
  return {x, y, width, height, full, small};
}

async function decodeHead(file: Blob): Promise<void> {
  const head = new Uint8Array(await file.slice(0, 8).arrayBuffer());
  const isPng = head[0] === 0x89 && head[1] === 0x50;
  const isTiff = (head[0] === 0x49 && head[1] === 0x49 && head[2] === 42) ||
      (head[0] === 0x4d && head[1] === 0x4d && head[3] === 42);
  if (!isPng && !isTiff) return;
  const bytes = new Uint8Array(await file.arrayBuffer());
  const {tags, samples} = (isPng ? decodePng : decodeTiff)(bytes);
  engine.call('decoded', JSON.stringify(tags), samples, samples.length);
}

const isHeaderless = (words: string[]) => words.includes('-s');

async function open(source: File | Scene, words: string[]): Promise<FrameInfo> {
  if (!(source instanceof File)) {
    engine.call('scene', source.width, source.height, source.bits);
    const path = engine.mount(new Blob([kDng]), 'scene.dng');
    return engine.call<FrameInfo>('open', path, JSON.stringify(words));
  }
  if (!isHeaderless(words)) await decodeHead(source);
  return engine.call<FrameInfo>('open', engine.mount(source, source.name), JSON.stringify(words));
}

function* strips(plan: Plan, first: number, rows: number): Generator<[number, number]> {
  const step = engine.prepare(plan).rows ? kTileSize : rows;
  for (let y = first; y < first + rows; y += step) yield [y, Math.min(step, first + rows - y)];
}

async function convert(plan: Plan, first: number, rows: number): Promise<Converted> {
  engine.prepare(plan);
  const tiles: Tile[] = [];
  let milliseconds = 0;
  for (const [y, count] of strips(plan, first, rows)) {
    const begin = performance.now();
    const [layout, pixels] = engine.convert(Purpose.display, y, count);
    milliseconds += performance.now() - begin;
    tiles.push(...await tilesOf(layout, pixels, y));
  }
  return {tiles, milliseconds};
}

// How long a conversion takes in one call, without any bitmaps.
function measure(plan: Plan, first: number, rows: number): number {
  engine.prepare(plan);
  const begin = performance.now();
  engine.convert(Purpose.display, first, rows);
  return performance.now() - begin;
}

async function thumbnail(plan: Plan): Promise<ImageBitmap> {
  const {height} = engine.prepare(plan);
  const [layout, pixels] = engine.convert(Purpose.display, 0, height);
  return createImageBitmap(new ImageData(rgbaOf(layout, pixels), layout.width, layout.height));
}

// A headerless file as a guess takes it, small.
async function preview(file: File, words: string[]): Promise<ImageBitmap> {
  await open(file, words);
  const picture = await thumbnail({command: 'develop', words: ['-a', 'bilinear', '--bin', '4']});
  const width = 160, height = Math.max(1, Math.round(width * picture.height / picture.width));
  return createImageBitmap(picture, {resizeWidth: width, resizeHeight: height, resizeQuality: 'high'});
}

function collect(plan: Plan, make: (first: number, rows: number) => [Layout, Uint8Array]): [Layout, Uint8Array] {
  const {width, height} = engine.prepare(plan);
  let all: Uint8Array | undefined, at = 0, layout: Layout | undefined;
  for (const [y, count] of strips(plan, 0, height)) {
    const [part, pixels] = make(y, count);
    all ??= new Uint8Array(pixels.length / part.height * height);
    all.set(pixels, at);
    at += pixels.length;
    layout = part;
  }
  return [{...layout!, width, height}, all!];
}

const functions: {[N in keyof Functions]: (...args: Parameters<Functions[N]>) =>
    ReturnType<Functions[N]> | Promise<ReturnType<Functions[N]>>} = {
  start: async (wasm) => {
    engine = await Engine.load(wasm);
    return engine.call<Algorithm[]>('algorithms');
  },
  open,
  guess: (file) => engine.call<Guess[]>('guess', engine.mount(file, file.name)),
  prepare: (plan) => engine.prepare(plan),
  convert, measure, thumbnail, preview,
  savePng: (plan) => encodePng(...collect(plan, (first, rows) => engine.save(first, rows))),
  saveBytes: (plan) => collect(plan, (first, rows) => engine.convert(Purpose.bytes, first, rows))[1],
  probe: (plan, x, y) => {
    engine.prepare(plan);
    return engine.call<Probe>('probe', x, y);
  },
  gray: (plan, x, y) => {
    engine.prepare(plan);
    return engine.call<number[]>('gray', x, y);
  },
  histogram: () => engine.call<Place[]>('histogram'),
  selftest: () => engine.call<Selftest>('selftest'),
};

function transfersOf(result: unknown): Transferable[] {
  if (result instanceof ImageBitmap) return [result];
  if (result instanceof Uint8Array) return [result.buffer];
  const tiles = (result as Partial<Converted>)?.tiles ?? [];
  return tiles.flatMap(({full, small}) => [full, small]);
}

async function answer({id, name, args}: Request): Promise<void> {
  try {
    const result = await (functions[name] as (...args: unknown[]) => unknown)(...args);
    postMessage({id, result} satisfies Reply, {transfer: transfersOf(result)});
  } catch (error) {
    postMessage({id, error: error instanceof Error ? error.message : String(error)} satisfies Reply);
  }
}

// One request after the other, since the engine has one frame.
let last = Promise.resolve();
onmessage = ({data}: MessageEvent<Request>) => { last = last.then(() => answer(data)); };
