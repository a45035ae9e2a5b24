// The tables of docs/browser.md, from what bench.mjs has measured.
import {fileURLToPath} from 'node:url';

const docs = new URL('../docs/', import.meta.url);
export const kJson = fileURLToPath(new URL('browser.json', docs));
export const kPage = fileURLToPath(new URL('browser.md', docs));

const kBegin = '<!-- from browser.json -->\n', kEnd = '<!-- end -->\n';

const table = (head, rows) =>
  [head, head.map(() => '---'), ...rows].map((cells) => `| ${cells.join(' | ')} |\n`).join('');
const milliseconds = (time) => `${time < 10 ? time.toFixed(1) : time.toFixed(0)} ms`;
const megabytes = (bytes) => `${(bytes / 1e6).toFixed(2)} MB`;

const speed = ({algorithms}) => table(
    ['Algorithm', 'Two workers', 'Strips', 'SSE4.1', 'Strips / SSE4.1'],
    algorithms.map(({algorithm, two_workers_ms, strips_ms, sse41_ms}) =>
      [algorithm, ...[two_workers_ms, strips_ms, sse41_ms].map(milliseconds), (strips_ms / sse41_ms).toFixed(2)]));

const page = ({page_bytes, single_file_bytes, first_picture_ms}) => table(
    ['The page', 'Measured', 'Goal'],
    [['compressed by gzip', `${megabytes(page_bytes)}; \`try.html\` ${megabytes(single_file_bytes)}`, '1.5 MB'],
     ['first picture of the scene', `${(first_picture_ms / 1000).toFixed(1)} s`, '2 s']]);

export function withTables(text, measured) {
  const {date, processor, cores, load, browser} = measured;
  const begin = text.indexOf(kBegin) + kBegin.length, end = text.indexOf(kEnd);
  const machine = `${date}, ${processor}, ${cores} cores, ${browser} headless, at a load of ${load.toFixed(1)}:\n`;
  return `${text.slice(0, begin)}${machine}\n${speed(measured)}\n${page(measured)}${text.slice(end)}`;
}
