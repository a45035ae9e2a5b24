// The engine in a worker: the module's functions, whose arguments and results are JSON.
import createModule from '../../build/wasm-simd/try/engine/engine.js';
import type {Layout, Plan, Prepared} from './protocol.ts';

export enum Purpose { display, picture, bytes }

interface Pixels extends Layout {
  place: number;
  bytes: number;
}

const kFolder = '/frames';

export class Engine {
  private prepared = '';
  private layout: Prepared | undefined;

  private constructor(private readonly module: EngineModule) {
    module.FS.mkdir(kFolder);
  }

  static async load(wasmBinary: ArrayBuffer): Promise<Engine> {
    return new Engine(await createModule({wasmBinary}));
  }

  // Calls a function of page.cpp. Strings and arrays of bytes are copied for the length of the call.
  call<T>(name: string, ...args: (string | number | Uint8Array)[]): T {
    const copies: number[] = [];
    const places = args.map((argument) => {
      if (typeof argument === 'number') return argument;
      const bytes = typeof argument === 'string' ? new TextEncoder().encode(argument + '\0') : argument;
      const place = this.module._malloc(Math.max(bytes.length, 1)) >>> 0;
      if (!place) throw new Error('The browser has not enough memory for this frame.');
      copies.push(place);
      this.module.HEAPU8.set(bytes, place);
      return place;
    });
    try {
      const text = this.module.UTF8ToString(this.module[`_try_${name}`](...places) >>> 0);
      const result = JSON.parse(text);
      if (result?.error !== undefined) throw new Error(result.error);
      return result;
    } finally {
      for (const place of copies) this.module._free(place);
    }
  }

  // The engine reads the file where it lies. Returns its path.
  mount(file: Blob, name: string): string {
    const {FS, WORKERFS} = this.module;
    if (FS.analyzePath(kFolder, false).object?.mount?.mountpoint === kFolder) FS.unmount(kFolder);
    const safe = name.replaceAll('/', '_');
    FS.mount(WORKERFS, {blobs: [{name: safe, data: file}]}, kFolder);
    this.prepared = '';
    return `${kFolder}/${safe}`;
  }

  prepare(plan: Plan): Prepared {
    const key = JSON.stringify(plan);
    if (this.prepared !== key) {
      this.prepared = '';
      this.layout = this.call<Prepared>('prepare', plan.command, JSON.stringify(plan.words));
      this.prepared = key;
    }
    return this.layout!;
  }

  // Pixels in the engine's memory, valid until the next call.
  convert(purpose: Purpose, first: number, rows: number): [Pixels, Uint8Array] {
    return this.withBytes(this.call<Pixels>('convert', purpose, first, rows));
  }

  save(first: number, rows: number): [Pixels, Uint8Array] {
    return this.withBytes(this.call<Pixels>('save', first, rows));
  }

  private withBytes(pixels: Pixels): [Pixels, Uint8Array] {
    const {place, bytes} = pixels;
    return [pixels, this.module.HEAPU8.subarray(place, place + bytes)];
  }
}
