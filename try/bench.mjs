// node bench.mjs: conversion times of 12 megapixels in this machine's browser, with two workers,
// beside half the program's time on one thread at SSE4.1, and how soon the scene appears.
import {readFileSync} from 'node:fs';
import {cpus, loadavg} from 'node:os';
import {launch, openPage, serve, settled, vistrel} from './tests/browser.mjs';
import {pgm} from './tests/frames.mjs';

const kWidth = 4000, kHeight = 3000, kRuns = 40, kAlgorithms = ['bilinear', 'ahd', 'directional'];

// Two workers of the page, each with the whole frame, as the page's own code uses them: the slower
// one's fastest run.
async function inBrowser(page, path) {
  const bytes = readFileSync(path).toString('base64');
  return page.evaluate(async ([text, algorithms, runs, height]) => {
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
    const times = {};
    for (const algorithm of algorithms) {
      const plan = {command: 'convert', words: ['-a', algorithm, '--edges', 'padded']};
      const least = workers.map(() => Infinity);
      for (let run = 0; run < runs; ++run)
        await Promise.all(workers.map(async (worker, i) => {
          least[i] = Math.min(least[i], await call(worker, 'measure', plan, i * height / 2, height / 2));
        }));
      times[algorithm] = Math.max(...least);
    }
    return times;
  }, [bytes, kAlgorithms, kRuns, kHeight]);
}

const server = await serve();
const browser = await launch();
const {page} = await openPage(browser, server.address);
const path = pgm('bench.pgm', kWidth, kHeight, 12, (i) => (i * 2654435761 >>> 13) % 4096);
const times = await inBrowser(page, path);

const begin = Date.now();
const shown = await openPage(browser, `${server.address}#scene`);
await shown.page.waitForSelector('#facts:not(:empty)');
await settled(shown.page);
const first = Date.now() - begin;
await browser.close();
server.close();

// In nanoseconds a pixel, of one thread.
const {timings} = JSON.parse(vistrel(
    'bench', path, '--phase', 'rggb', '--json', '--rounds', '15', ...kAlgorithms.flatMap((name) => ['-a', name])));
const nativeTime = (algorithm) => timings.find((timing) =>
  timing.algorithm === algorithm && timing.level === 'sse41').ns_per_pixel * kWidth * kHeight / 1e6 / 2;

console.log(`${new Date().toISOString().slice(0, 10)}, ${cpus()[0].model}, load ${loadavg()[0].toFixed(1)}`);
console.log('12 megapixels of 12 bits     browser    SSE4.1');
for (const algorithm of kAlgorithms)
  console.log(`${algorithm.padEnd(24)}${times[algorithm].toFixed(1).padStart(9)} ms` +
              `${nativeTime(algorithm).toFixed(1).padStart(7)} ms`);
console.log(`first picture of the scene: ${first} ms`);
