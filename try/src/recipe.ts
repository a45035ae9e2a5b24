// Commands and programs that make the same picture.
import type {FrameInfo, Plan, Prepared} from './protocol.ts';

export interface Recipe {
  name: string;  // of the file
  input: string[];  // options that describe it
  plan: Plan;  // as the user chose it
  frame: FrameInfo;
  prepared: Prepared;
}

const quoted = (word: string) =>
  /^[\w@%+=:,./-]+$/.test(word) ? word : `'${word.replaceAll("'", "'\\''")}'`;

// The value of an option, if it is given.
function valueOf(words: string[], option: string): string | undefined {
  const at = words.indexOf(option);
  return at < 0 ? undefined : words[at + 1];
}

const stem = (name: string) => name.replace(/\.[^.]*$/, '');

export function shell({name, input, plan, frame}: Recipe): string {
  const words = ['vistrel', plan.command, name, ...input, ...plan.words, '-o', `${stem(name)}-picture.png`];
  const command = words.map(quoted).join(' ');
  return name === 'scene.dng' ? `vistrel scene --camera -s ${frame.width}x${frame.height} -o scene.dng\n${command}` : command;
}

const kPythonInput: Record<string, (value: string) => string> = {
  '--phase': (value) => `phase="${value}"`,
  '--bits': (value) => `bits=${value}`,
  '-s': (value) => `size=(${value.replace('x', ', ')})`,
  '--pixfmt': (value) => `pixel_format="${value}"`,
  '--endian': (value) => `byte_order="${value}"`,
  '--align': (value) => `align="${value}"`,
  '--skip': (value) => `skip=${value}`,
  '--stride': (value) => `stride=${value}`,
  '--frame': (value) => `frame=${value}`,
};

function pythonInput(words: string[]): string[] {
  const named = Object.entries(kPythonInput).flatMap(([option, write]) => {
    const value = valueOf(words, option);
    return value === undefined ? [] : [write(value)];
  });
  return words.includes('--continuous') ? [...named, 'continuous=True'] : named;
}

function pythonPlan({command, words}: Plan): string[] {
  const [algorithm, threshold] = (valueOf(words, '-a') ?? '').split(':');
  const look = valueOf(words, '--look'), black = valueOf(words, '--black');
  const gains = valueOf(words, '--wb'), curve = valueOf(words, '--curve');
  return [
    ...look ? [`look="${look}"`] : [],
    ...algorithm ? [`algorithm="${algorithm}"`] : [],
    ...threshold ? [`threshold=${threshold}`] : [],
    ...black ? [`black=${black.includes(':') ? `[${black.replaceAll(':', ', ')}]` : black}`] : [],
    ...gains ? [`gains=${gains === 'auto' ? '"gray-world"' : `(${gains.replaceAll(',', ', ')})`}`] : [],
    ...curve ? [`curve=${curve}`] : [],
    `edges="${valueOf(words, '--edges')}"`,
    ...valueOf(words, '--depth') === 'reduce10' ? ['truncate_to=10'] : [],
    ...valueOf(words, '--depth') === '16' ? [`dtype="uint16"`] : [],
  ].filter((argument) => command === 'convert' || !argument.startsWith('black'));
}

export function python({name, input, plan}: Recipe): string {
  const options = pythonPlan(plan).join(',\n    ');
  return `import vistrel

frame = vistrel.read(${[JSON.stringify(name), ...pythonInput(input)].join(', ')})
picture = frame.${plan.command}(
    ${options})
vistrel.write(${JSON.stringify(`${stem(name)}-picture.png`)}, picture)`;
}

const one = (number: number) => Math.round(number * 4096);

function cLook({look}: Prepared): string {
  if (!look) return '';
  const [curve, parameter] = look.curve.split(':');
  const matrix = look.matrix
      ? `\n  static const int32_t matrix[9] = {${look.matrix.map(one).join(', ')}};
  memcpy(finish.matrix, matrix, sizeof matrix);`
      : '';
  const highlights = look.highlights === 'neutral' ? '\n  finish.highlights = VISTREL_HIGHLIGHTS_NEUTRAL;' : '';
  const transfer = curve === 'linear' ? '' : `
  static uint16_t transfer[65536];
  vistrel_make_transfer(VISTREL_TRANSFER_${curve.toUpperCase()}, ${Math.round(Number(parameter ?? 0) * 1000)}, transfer, 65536, error);
  finish.transfer = transfer;
  finish.transfer_points = 65536;`;
  return `
  vistrel_finish finish = {0};
  finish.exposure = ${one(look.exposure)};${highlights}${matrix}${transfer}
  conversion.finish = &finish;
  conversion.white = ${look.white};`;
}

function cLevels({plan, prepared}: Recipe): string {
  const {look} = prepared;
  const black = look?.black ?? (valueOf(plan.words, '--black') ?? '0').split(':').map(Number);
  const wb = valueOf(plan.words, '--wb');
  const gains = look?.gains ?? (wb && wb !== 'auto' ? wb.split(',').map(Number) : undefined);
  const lines = [0, 1, 2, 3].map((i) => black[i] ?? black[0])
      .flatMap((level, i) => level ? [`conversion.black[${i}] = ${level};`] : []);
  if (gains) {
    lines.push('conversion.white_balance = VISTREL_BALANCE_GAINS;');
    gains.forEach((gain, i) => lines.push(`conversion.gains[${i}] = ${one(gain)};`));
  } else if (wb) {
    lines.push('conversion.white_balance = VISTREL_BALANCE_GRAY_WORLD;');
  }
  if (valueOf(plan.words, '--depth') === 'reduce10') lines.push('conversion.truncate_to = 10;');
  const curve = valueOf(plan.words, '--curve');
  if (curve) lines.push(`conversion.reduction = ${Number(curve) + 1};  /* a tone curve */`);
  return lines.map((line) => `\n  ${line}`).join('');
}

export function c(recipe: Recipe): string {
  const {plan, frame, prepared} = recipe;
  const [algorithm, threshold] = (valueOf(plan.words, '-a') ?? 'bilinear').split(':');
  const bits = valueOf(plan.words, '--depth') === '16' ? 16 : 8;
  const format = prepared.channels === 1 ? `MONO${bits}` : `RGB${bits * 3}`;
  return `#include <string.h>
#include <vistrel/vistrel_host.h>

/* ${frame.width} x ${frame.height} samples of ${8 * frame.bytesPerSample} bits to ${prepared.width} x ${prepared.height} pixels. */
int32_t make_picture(const void *samples, void *pixels, size_t size, vistrel_error *error) {
  vistrel_frame frame = {0};
  frame.samples = samples;
  frame.width = ${frame.width};
  frame.height = ${frame.height};
  frame.bytes_per_sample = ${frame.bytesPerSample};
  frame.bits = ${frame.bits};
  frame.phase = VISTREL_${frame.phase.toUpperCase()};
  frame.size = (size_t)${frame.bytesPerSample} * frame.width * frame.height;

  vistrel_conversion conversion;
  vistrel_default_conversion(&frame, &conversion);
  conversion.format = VISTREL_${format};
  conversion.algorithm = VISTREL_${algorithm.toUpperCase()};${threshold ? `\n  conversion.threshold = ${threshold};` : ''}
  conversion.edges = VISTREL_EDGES_${valueOf(plan.words, '--edges')!.toUpperCase()};${cLevels(recipe)}${cLook(prepared)}

  vistrel_image image = {0};
  image.pixels = pixels;
  image.size = size;
  return vistrel_convert(&frame, &conversion, &image, error);
}`;
}
