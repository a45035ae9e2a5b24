// What Emscripten's module offers.
interface EngineModule {
  [name: `_try_${string}`]: (...args: number[]) => number;
  _malloc(bytes: number): number;
  _free(place: number): void;
  UTF8ToString(place: number): string;
  HEAPU8: Uint8Array;
  FS: any;
  WORKERFS: unknown;
}

declare module '*/engine.js' {
  export default function createModule(options: {wasmBinary: ArrayBuffer}): Promise<EngineModule>;
}

declare const INLINE: boolean;  // whether the page is a single file
