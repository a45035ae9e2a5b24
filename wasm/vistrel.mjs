// libvistrelhost for JavaScript: in browsers, in workers and in Node.js.
//
//   const vistrel = await loadVistrel();
//   const frame = {samples, width: 640, height: 480, bits: 12, phase: 'rggb'};
//   const image = vistrel.convert(frame, {format: 'RGBA32', algorithm: 'ahd'});
//
// Frames and conversions have the fields of vistrel_frame and vistrel_conversion, under the same
// names. Fields that are left out have their defaults. Arrays stand for pointers, names for codes of
// phases, formats, algorithms, packings and transfer curves; all other choices are numbers.

// A rejected call. `status` is its code, see vistrel_status.h; the message names the argument, its
// value and what is allowed.
export class VistrelError extends Error {
  constructor(status, text) {
    super(text);
    this.name = 'VistrelError';
    this.status = status;
  }
}

// A module with one function, which uses a vector.
const kVectorModule = Uint8Array.of(
    0, 97, 115, 109, 1, 0, 0, 0,                     // magic number, version
    1, 4, 1, 96, 0, 0, 3, 2, 1, 0,                   // a function without arguments or results
    10, 9, 1, 7, 0, 65, 0, 253, 15, 26, 11);         // i32.const 0, i8x16.splat, drop, end

async function bytesAt(url) {
  if (url.protocol === 'file:') return (await import('node:fs/promises')).readFile(url);
  const response = await fetch(url);
  if (!response.ok) throw new Error(`${url}: ${response.status} ${response.statusText}`);
  return new Uint8Array(await response.arrayBuffer());
}

// Loads the module that suits this machine, from the folder of this file. Returns a promise of a
// Vistrel; it fails if the module can't be fetched.
export async function loadVistrel() {
  const name = WebAssembly.validate(kVectorModule) ? 'simd' : 'plain';
  const {default: create} = await import(`./vistrel-${name}.mjs`);
  const wasmBinary = await bytesAt(new URL(`vistrel-${name}.wasm`, import.meta.url));
  return new Vistrel(await create({wasmBinary}), name);
}

// Memory of the module for the length of a call.
class Scratch {
  #module;
  #places = [];
  constructor(module) { this.#module = module; }
  take(bytes) {
    const place = this.#module._malloc(Math.max(bytes, 1));
    if (!place) throw new VistrelError(17, 'memory: there is not enough of it');
    this.#places.push(place);
    this.#module.HEAPU8.fill(0, place, place + bytes);
    return place;
  }
  copy(array) {
    const place = this.take(array.byteLength);
    this.#module.HEAPU8.set(new Uint8Array(array.buffer, array.byteOffset, array.byteLength), place);
    return place;
  }
  text(string) { return this.copy(new TextEncoder().encode(string + '\0')); }
  free() { for (const place of this.#places) this.#module._free(place); }
}

// libvistrelhost in a module of its own, as loadVistrel returns it. Each call copies its arrays into
// the module's memory and frees that before it returns. `module` is the name of the module: 'simd'
// with vector instructions, or 'plain'.
class Vistrel {
  #module;
  #fields = new Map();

  constructor(module, name) {
    this.#module = module;
    this.module = name;
    const view = this.#view();
    for (let at = module._vistrel_wasm_fields(); view.getUint32(at, true); at += 12)
      this.#fields.set(module.UTF8ToString(view.getUint32(at, true)),
                       {offset: view.getUint32(at + 4, true), bytes: view.getUint32(at + 8, true)});
  }

  // Major version * 10000 + minor version * 100 + patch.
  get version() { return this.#module._vistrel_version(); }

  // The image: width, height, channels, bits, and its pixels in rows without padding, as Uint8Array,
  // or as Uint16Array if they have more than 8 bits. Throws VistrelError; TypeError if there is no
  // such field.
  convert(frame, conversion = {}) {
    return this.#withScratch((scratch) => {
      const place = this.#frame(scratch, frame);
      const wanted = this.#conversion(scratch, place, conversion);
      const layout = scratch.take(this.#fields.get('layout').bytes);
      this.#call(scratch, '_vistrel_get_layout', place, wanted, layout);
      const size = this.#get('layout', layout, 'bytes');
      const pixels = scratch.take(size);
      const image = this.#structure(scratch, 'image', {pixels, size});
      this.#call(scratch, '_vistrel_convert', place, wanted, image);
      const get = (field) => this.#get('layout', layout, field);
      const bytes = this.#module.HEAPU8.slice(pixels, pixels + size);
      return {
        width: get('width'), height: get('height'), channels: get('channels'), bits: get('bits'),
        pixels: get('bits') > 8 ? new Uint16Array(bytes.buffer) : bytes
      };
    });
  }

  // The gains of red, green and blue that make a frame neutral, in 1/4096: gray-world. Of the
  // conversion, black, white, excess and region count. Throws VistrelError.
  measureGains(frame, conversion = {}) {
    return this.#withScratch((scratch) => {
      const place = this.#frame(scratch, frame);
      const wanted = this.#conversion(scratch, place, conversion);
      const gains = scratch.take(12);
      this.#call(scratch, '_vistrel_measure_gains', place, wanted, gains);
      return [0, 4, 8].map((offset) => this.#view().getUint32(gains + offset, true));
    });
  }

  // The points of a transfer curve, 0 to 65535, as Uint16Array: of the kind 'linear', 'srgb', 'gamma'
  // or 'asinh'. The parameter is in thousandths, the count 2 to 65536: see vistrel_make_transfer.
  // Throws VistrelError.
  makeTransfer(kind, parameter = 0, count = 65536) {
    return this.#withScratch((scratch) => {
      const points = scratch.take(2 * count);
      const code = this.#code(scratch, 'transfer', kind);
      this.#call(scratch, '_vistrel_make_transfer', code, parameter, points, count);
      return new Uint16Array(this.#module.HEAPU8.slice(points, points + 2 * count).buffer);
    });
  }

  #view() { return new DataView(this.#module.HEAPU8.buffer); }

  #withScratch(body) {
    const scratch = new Scratch(this.#module);
    try {
      return body(scratch);
    } finally {
      scratch.free();
    }
  }

  // Calls a function whose last argument is a vistrel_error.
  #call(scratch, name, ...args) {
    const error = scratch.take(this.#fields.get('error').bytes);
    const status = this.#module[name](...args, error);
    if (status === 0) return;
    const text = error + this.#fields.get('error.text').offset;
    throw new VistrelError(status, this.#module.UTF8ToString(text));
  }

  #get(structure, place, field) {
    return this.#view().getUint32(place + this.#fields.get(`${structure}.${field}`).offset, true);
  }

  // Values are numbers, or arrays of numbers for fields that are arrays.
  #set(structure, place, values) {
    for (const [name, value] of Object.entries(values)) {
      const field = this.#fields.get(`${structure}.${name}`);
      if (!field) throw new TypeError(`a ${structure} has no field ${name}`);
      const numbers = Array.isArray(value) ? value : [value];
      if (4 * numbers.length !== field.bytes)
        throw new TypeError(`${structure}.${name}: ${field.bytes / 4} numbers are needed`);
      const view = this.#view();
      numbers.forEach((number, i) => view.setUint32(place + field.offset + 4 * i, number, true));
    }
  }

  #structure(scratch, name, values) {
    const place = scratch.take(this.#fields.get(name).bytes);
    this.#set(name, place, values);
    return place;
  }

  #code(scratch, kind, name) {
    if (typeof name === 'number') return name;
    const code = scratch.take(4);
    this.#call(scratch, `_vistrel_parse_${kind}`, scratch.text(name), code);
    return this.#view().getUint32(code, true);
  }

  // Replaces the names among the values by codes.
  #coded(scratch, values, kinds) {
    const coded = {...values};
    for (const kind of kinds)
      if (kind in coded) coded[kind] = this.#code(scratch, kind, coded[kind]);
    return coded;
  }

  #frame(scratch, frame) {
    const {samples, ...values} = this.#coded(scratch, frame, ['phase', 'packing']);
    const bytesPerSample = values.packing ? 2 : samples.BYTES_PER_ELEMENT;
    return this.#structure(scratch, 'frame', {
      bits: 8 * samples.BYTES_PER_ELEMENT, bytes_per_sample: bytesPerSample, ...values,
      samples: scratch.copy(samples), size: samples.byteLength
    });
  }

  #conversion(scratch, frame, conversion) {
    const values = this.#coded(scratch, conversion, ['format', 'algorithm']);
    if (values.table)
      Object.assign(values, {table_entries: values.table.length, table: scratch.copy(values.table)});
    if (values.finish) values.finish = this.#finish(scratch, values.finish);
    if (values.calibration) values.calibration = this.#calibration(scratch, values.calibration);
    const place = scratch.take(this.#fields.get('conversion').bytes);
    this.#module._vistrel_default_conversion(frame, place);
    this.#set('conversion', place, values);
    return place;
  }

  // transfer: the points of a curve.
  #finish(scratch, {transfer, ...values}) {
    const curve = transfer && {transfer_points: transfer.length, transfer: scratch.copy(transfer)};
    return this.#structure(scratch, 'finish', {exposure: 4096, ...values, ...curve});
  }

  // dark and flat: Uint16Array; hot: Uint32Array of pairs x, y.
  #calibration(scratch, {dark, flat, hot}) {
    return this.#structure(scratch, 'calibration', {
      ...dark && {dark: scratch.copy(dark), dark_size: dark.byteLength},
      ...flat && {flat: scratch.copy(flat), flat_size: flat.byteLength},
      ...hot && {hot: scratch.copy(hot), hot_count: hot.length / 2}
    });
  }
}
