// Large frames and many frames.
import assert from 'node:assert/strict';
import {readdirSync, readFileSync} from 'node:fs';
import {join} from 'node:path';
import {gzipSync} from 'node:zlib';
import {after, test} from 'node:test';
import {choose, folder, give, launch, openPage, serve, settled} from './browser.mjs';
import {file, pgm} from './frames.mjs';

const server = await serve();
const browser = await launch();
const view = await openPage(browser, server.address);
after(async () => {
  await browser.close();
  server.close();
});

test('memory stays flat over 50 frames', async () => {
  const session = await browser.newBrowserCDPSession();
  // What the page's process holds, in megabytes.
  const held = async () => {
    const {processInfo} = await session.send('SystemInfo.getProcessInfo');
    return Math.max(...processInfo.filter(({type}) => type === 'renderer').map(({id}) =>
      Number(readFileSync(`/proc/${id}/status`, 'utf8').match(/RssAnon:\s+(\d+)/)[1]) / 1024));
  };
  const path = pgm('flat.pgm', 2000, 1500, 12, (i) => (i * 31) % 4096);
  let settledAt = 0;
  for (let n = 0; n < 50; ++n) {
    await give(view.page, path);
    if (n >= 10 && n < 20) settledAt = Math.max(settledAt, await held());
  }
  const end = await held();
  assert.ok(end < 1.15 * settledAt, `${settledAt.toFixed()} MB after 10 frames, ${end.toFixed()} MB after 50`);
});

test('100 megapixels', async () => {
  const width = 11648, height = 8736;
  const row = Buffer.alloc(2 * width);
  for (let x = 0; x < width; ++x) row.writeUInt16BE((x * 7) % 4096, 2 * x);
  const rows = Array.from({length: height}, () => row);
  await give(view.page, file('large.pgm', Buffer.concat([Buffer.from(`P5\n${width} ${height}\n4095\n`), ...rows])));
  assert.equal(await view.page.isVisible('#message'), false, await view.page.textContent('#message'));
  await choose(view.page, 'algorithm', 'bilinear');
  assert.match(await view.page.textContent('#facts'), /11648 × 8736/);
  await view.page.click('#zoom-one');
  await view.page.focus('#canvas');
  await view.page.keyboard.press('Enter');
  await settled(view.page);
  assert.match(await view.page.textContent('#samples caption'), /column 58\d\d, row 43\d\d/);
});

test('less than 1.5 MB over the wire', () => {
  const files = readdirSync(folder).filter((name) => name !== 'try.html');
  const bytes = (names) => names.reduce((sum, name) => sum + gzipSync(readFileSync(join(folder, name))).length, 0);
  assert.ok(files.includes('engine.wasm') && files.includes('worker.js'), files.join());
  assert.ok(bytes(files) < 1.5e6, `${bytes(files)}`);
  assert.ok(bytes(['try.html']) < 1.5e6, `${bytes(['try.html'])}`);
});

test('no complaints', () => assert.deepEqual(view.faults, []));
