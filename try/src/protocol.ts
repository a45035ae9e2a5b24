// What the page and its workers say to each other.

export interface Plan {
  command: 'develop' | 'convert';
  words: string[];  // options of that command
}

export interface FrameInfo {
  format: string;
  width: number;
  height: number;
  bits: number;
  bytesPerSample: number;
  phase: string;
  knowsPhase: boolean;
  frames: number;
  warnings: string[];
}

export interface Layout {
  width: number;
  height: number;
  channels: number;
  bits: number;
}

export interface Look {
  black: number[];
  white: number;
  gains?: number[];
  matrix?: number[];
  highlights?: string;
  exposure: number;
  curve: string;
}

export interface Prepared extends Layout {
  rows: boolean;  // whether workers can share the rows
  look?: Look;
  lookText?: string;
}

export interface Guess {
  score: number;
  text: string;
  options: string;
}

export interface Tile {
  x: number;
  y: number;
  width: number;
  height: number;
  full: ImageBitmap;
  small: ImageBitmap;  // a quarter as wide and high, for the whole picture at a glance
}

export interface Converted {
  tiles: Tile[];
  milliseconds: number;  // of the conversion alone
}

export interface Probe {
  mosaic: [x: number, y: number, sample: number, colour: number][];
  colour: number[];
  bits: number;
}

export interface Place {
  colour: number;
  counts: number[];
}

export interface Algorithm {
  name: string;
  use: string;
}

export interface Scene {
  width: number;
  height: number;
  bits: number;
}

export interface Selftest {
  combinations: number;
  differences: number;
}

// The worker's functions: arguments and result of each.
export interface Functions {
  start(engine: ArrayBuffer): Algorithm[];
  open(source: File | Scene, words: string[]): FrameInfo;
  guess(file: File): Guess[];
  prepare(plan: Plan): Prepared;
  convert(plan: Plan, first: number, rows: number): Converted;
  measure(plan: Plan, first: number, rows: number): number;
  thumbnail(plan: Plan): ImageBitmap;
  preview(file: File, words: string[]): ImageBitmap;
  savePng(plan: Plan): Uint8Array;
  saveBytes(plan: Plan): Uint8Array;
  probe(plan: Plan, x: number, y: number): Probe;
  gray(plan: Plan, x: number, y: number): number[];
  histogram(): Place[];
  selftest(): Selftest;
}

export type Name = keyof Functions;

export interface Request {
  id: number;
  name: Name;
  args: unknown[];
}

export interface Reply {
  id: number;
  result?: unknown;
  error?: string;
}
