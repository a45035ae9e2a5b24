// What stands beside the picture: samples, histogram, contact sheet, candidates.
import {element} from './controls.ts';
import type {FrameInfo, Guess, Place, Probe} from './protocol.ts';

const kColours = ['red', 'green', 'blue'];

function make(tag: string, text = '', name = ''): HTMLElement {
  const made = document.createElement(tag);
  made.textContent = text;
  if (name) made.className = name;
  return made;
}

export function showProbe(x: number, y: number, {mosaic, colour, bits}: Probe, isMono: boolean): void {
  const table = make('table');
  table.append(make('caption', `Mosaic around column ${x}, row ${y}`));
  let row: HTMLElement | undefined, last = -1;
  for (const [, j, sample, filter] of mosaic) {
    if (j !== last) table.append(row = make('tr'));
    last = j;
    row!.append(make('td', String(sample), isMono ? '' : kColours[filter]));
  }
  const names = colour.length === 1 ? ['gray'] : kColours;
  const line = make('p', '', 'colour');
  line.append(...colour.map((sample, i) => make('span', `${names[i]} ${sample}`, names[i])));
  line.append(make('span', `of ${2 ** bits - 1}`, 'hint'));
  element('samples').replaceChildren(table, line);
}

function heightsOf(counts: number[]): number[] {
  const most = Math.log1p(Math.max(...counts));
  return counts.map((count) => most ? Math.log1p(count) / most : 0);
}

export function showHistogram(places: Place[], {bits, phase}: FrameInfo): void {
  const canvas = element<HTMLCanvasElement>('histogram');
  const context = canvas.getContext('2d')!, {width, height} = canvas;
  const style = getComputedStyle(document.documentElement);
  context.clearRect(0, 0, width, height);
  places.forEach(({colour, counts}, i) => {
    if (phase === 'mono' && i) return;
    context.strokeStyle = phase === 'mono' ? style.color : style.getPropertyValue(`--${kColours[colour]}`);
    context.lineWidth = 1.5;
    context.beginPath();
    heightsOf(counts).forEach((part, n) => context.lineTo((n + 0.5) * width / counts.length, height - 2 - part * (height - 6)));
    context.stroke();
  });
  element('histogram-text').textContent =
      `From 0 to ${2 ** bits - 1}; the height grows with the logarithm of the count.`;
}

function picture(bitmap: ImageBitmap): HTMLCanvasElement {
  const canvas = document.createElement('canvas');
  [canvas.width, canvas.height] = [bitmap.width, bitmap.height];
  canvas.getContext('2d')!.drawImage(bitmap, 0, 0);
  bitmap.close();
  canvas.setAttribute('aria-hidden', 'true');
  return canvas;
}

function choice(bitmap: ImageBitmap, text: string, choose: () => void): HTMLElement {
  const item = make('li'), button = make('button') as HTMLButtonElement;
  button.type = 'button';
  button.append(picture(bitmap), make('span', text));
  button.onclick = choose;
  item.append(button);
  return item;
}

export function addCandidate(bitmap: ImageBitmap, {score, text}: Guess, choose: () => void): void {
  const words = text.replace(/^[\d.]+\s+/, '');
  const percent = score < 0.01 ? 'less than 1 %' : `${Math.round(100 * score)} %`;
  element('candidate-list').append(choice(bitmap, `${percent}: ${words}`, choose));
}

export function addToSheet(bitmap: ImageBitmap, name: string, choose: () => void): void {
  element('sheet').append(choice(bitmap, name, choose));
}

// Why an algorithm has no picture.
export function addReason(name: string, reason: string): void {
  const item = make('li', '', 'reason');
  item.append(make('strong', name), make('span', reason));
  element('sheet').append(item);
}
