// node bench.mjs: conversion times of 12 megapixels in this machine's browser beside the program's
// at SSE4.1, when the scene's first picture appears, and how large the page is. Writes
// docs/browser.json, and the tables made of it into docs/browser.md.
import {readFileSync, readdirSync, writeFileSync} from 'node:fs';
import {cpus, loadavg} from 'node:os';
import {join} from 'node:path';
import {gzipSync} from 'node:zlib';
import {kJson, kPage, withTables} from './measured.mjs';
import {firstPicture, folder, launch, openPage, serve, vistrel} from './tests/browser.mjs';
import {pgm} from './tests/frames.mjs';

const kWidth = 4000, kHeight = 3000, kStrip = 300, kRuns = 10, kStripRuns = 120;
const kAlgorithms = ['bilinear', 'ahd', 'directional'];

const sampleAt = (i) => (i * 2654435761 >>> 13) % 4096;

// The page's own workers, each with the whole frame: the slower one's fastest run of half the frame
// while both convert, then the fastest strip of one, as part of half a frame.
async function inBrowser(page, path) {
  const bytes = readFileSync(path).toString('base64');
  return page.evaluate(async ([text, {algorithms, height, strip, runs, stripRuns}]) => {
    const engine = await (await fetch('engine.wasm')).arrayBuffer();
    const file = new File([Uint8Array.from(atob(text), (c) => c.charCodeAt(0))], 'bench.pgm');
    const workers = [new Worker('worker.js'), new Worker('worker.js')];
    const call = (worker, name, ...args) => new Promise((resolve, reject) => {
      worker.onmessage = ({data}) => data.error ? reject(new Error(data.error)) : resolve(data.result);
      worker.postMessage({id: 0, name, args});
    });
    for (const worker of workers) {
      await call(worker, 'start', engine);
      await call(worker, 'open', file, ['--phase', 'rggb']);
    }
    const results = [];
    for (const algorithm of algorithms) {
      const plan = {command: 'convert', words: ['-a', algorithm, '--edges', 'padded']};
      const least = workers.map(() => Infinity);
      for (let run = 0; run < runs; ++run)
        await Promise.all(workers.map(async (worker, i) => {
          least[i] = Math.min(least[i], await call(worker, 'measure', plan, i * height / 2, height / 2));
        }));
      let fastest = Infinity;
      for (let run = 0; run < stripRuns; ++run) {
        const first = run * strip % (height / 2);
        fastest = Math.min(fastest, await call(workers[0], 'measure', plan, first, strip));
      }
      results.push({algorithm, two_workers_ms: Math.max(...least), strips_ms: fastest * height / 2 / strip});
    }
    return results;
  }, [bytes, {algorithms: kAlgorithms, height: kHeight, strip: kStrip, runs: kRuns, stripRuns: kStripRuns}]);
}

// The program's time for half the frame, from a frame of one strip.
function natively() {
  const path = pgm('strip.pgm', kWidth, kStrip, 12, sampleAt);
  const {timings} = JSON.parse(vistrel('bench', path, '--phase', 'rggb', '--json', '--rounds', '15',
                                       ...kAlgorithms.flatMap((name) => ['-a', name])));
  return (algorithm) => timings.find((timing) => timing.algorithm === algorithm && timing.level === 'sse41')
      .ns_per_pixel * kWidth * kHeight / 2 / 1e6;
}

const compressed = (name) => gzipSync(readFileSync(join(folder, name)), {level: 9}).length;

const server = await serve();
const browser = await launch();
const load = loadavg()[0];
const {page, close} = await openPage(browser, server.address);
const algorithms = await inBrowser(page, pgm('bench.pgm', kWidth, kHeight, 12, sampleAt));
await close();
const sse41 = natively();
const pictures = [];
for (let n = 0; n < 5; ++n) pictures.push(await firstPicture(browser, server.address));
const measured = {
  date: new Date().toISOString().slice(0, 10),
  processor: cpus()[0].model,
  cores: cpus().length,
  load,
  browser: `Chromium ${browser.version().split('.')[0]}`,
  algorithms: algorithms.map((row) => ({...row, sse41_ms: sse41(row.algorithm)})),
  first_picture_ms: Math.min(...pictures),
  page_bytes: readdirSync(folder).filter((name) => name !== 'try.html').reduce((sum, name) => sum + compressed(name), 0),
  single_file_bytes: compressed('try.html'),
};
await browser.close();
server.close();
writeFileSync(kJson, `${JSON.stringify(measured, null, 2)}\n`);
writeFileSync(kPage, withTables(readFileSync(kPage, 'utf8'), measured));
console.log(measured);
