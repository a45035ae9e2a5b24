// What newcomers do, in a real browser.
import assert from 'node:assert/strict';
import {readFileSync, statSync} from 'node:fs';
import {createRequire} from 'node:module';
import {join} from 'node:path';
import {pathToFileURL} from 'node:url';
import {after, test} from 'node:test';
import {choose, firstPicture, folder, give, launch, openPage, saved, scratch, serve, settled} from './browser.mjs';
import {file, scene} from './frames.mjs';

const axe = readFileSync(createRequire(import.meta.url).resolve('axe-core'), 'utf8');

const server = await serve();
const browser = await launch();
after(async () => {
  await browser.close();
  server.close();
});

async function withPage(options, action, address = server.address) {
  const view = await openPage(browser, address, options);
  try {
    await action(view.page);
    assert.deepEqual(view.faults, []);
  } finally {
    await view.close();
  }
}

async function expectAccessible(page) {
  await page.evaluate(`${axe}; 0`);
  const {violations} = await page.evaluate(() => axe.run());
  assert.deepEqual(violations.map(({id, nodes}) => [id, nodes.map(({html}) => html)]), []);
}

const picture = (page, name) => page.screenshot({path: join(scratch, `${name}.png`), fullPage: true});

async function showScene(page) {
  await page.click('#scene');
  await settled(page);
  assert.equal(await page.isVisible('#canvas'), true);
}

test('a headerless file: guess, develop, compare, save', () => withPage({}, async (page) => {
  const path = scene('cam.raw', '-s', '648x484', '--bits', '12', '--phase', 'rggb', '--camera');
  await give(page, path);
  assert.match(await page.textContent('#candidate-list button'), /648x484/);
  await page.click('#candidate-list button');
  await settled(page);
  assert.match(await page.textContent('#facts'), /648 × 484, 12 bits/);
  await choose(page, 'other', 'bilinear');
  assert.equal(await page.isVisible('#split'), true);
  await page.click('#make-sheet');
  await settled(page);
  assert.equal(await page.locator('#sheet button').count(), 11);
  await page.locator('#sheet button', {hasText: 'ahd'}).click();
  await settled(page);
  assert.equal(await page.inputValue('#algorithm'), 'ahd');
  assert.match(await page.textContent('#code'), /^vistrel develop cam\.raw -s 648x484 --bits 12 /);
  assert.equal((await saved(page, 'save-bytes')).length, 648 * 484 * 3);
  await picture(page, 'headerless');
}));

test('the contact sheet says which algorithms can’t take the frame', () => withPage({}, async (page) => {
  await give(page, scene('twelve.pgm', '-s', '200x120', '--bits', '12'));
  await choose(page, 'command', 'convert');
  await page.click('#make-sheet');
  await settled(page);
  const reasons = await page.locator('#sheet .reason').allTextContents();
  assert.ok(reasons.some((text) => /^hamilton.*at most 10 bits/.test(text)), reasons.join('; '));
  assert.equal(await page.locator('#sheet button').count() + reasons.length, 11);
  await expectAccessible(page);
  await picture(page, 'reasons');
}));

test('the first picture of the scene', async (t) => {
  const times = [];
  for (let n = 0; n < 3; ++n) times.push(await firstPicture(browser, server.address));
  t.diagnostic(`after ${times.map((time) => time.toFixed(0)).join(', ')} ms`);
  assert.ok(Math.min(...times) < 30_000, times.join());  // on machines that are busy
});

test('files that are no frames', () => withPage({}, async (page) => {
  const texts = {
    'empty.pgm': [Buffer.alloc(0), /empty/],
    'note.txt': [Buffer.from('abc'), /looks like a frame/],
    'short.pgm': [Buffer.from('P5\n640 480\n255\nabc'), /too short/],
    'colour.ppm': [Buffer.from('P6\n2 2\n255\n123456789012'), /P6|PGM|gray/],
    'photo.cr2': [Buffer.alloc(4000, 1), /the program does/],
    'sky.fits': [Buffer.from('SIMPLE  =                    T'.padEnd(2880)), /FITS; the program does/],
    'broken.png': [Buffer.from('\x89PNG\r\n\x1a\nnothing', 'latin1'), /PNG|chunk|CRC|buffer|range|offset/i],
    'broken.dng': [Buffer.from('II*\0\xff\xff\xff\x7f', 'latin1'), /TIFF/],
  };
  for (const [name, [bytes, expected]] of Object.entries(texts)) {
    await give(page, file(name, bytes));
    assert.equal(await page.isVisible('#message'), true, name);
    const text = await page.textContent('#message');
    assert.ok(text.startsWith(`${name}: `), text);
    assert.match(text, expected);
  }
  await showScene(page);
  assert.equal(await page.isVisible('#message'), false);
}));

test('a file that is dropped', () => withPage({}, async (page) => {
  const dataTransfer = await page.evaluateHandle(() => {
    const transfer = new DataTransfer();
    const bytes = [...new TextEncoder().encode('P5\n32 32\n255\n'), ...Array(1024).fill(99)];
    transfer.items.add(new File([Uint8Array.from(bytes)], 'dropped.pgm'));
    return transfer;
  });
  await page.dispatchEvent('#empty', 'drop', {dataTransfer});
  await page.waitForSelector('#work:not([hidden])');
  await settled(page);
  assert.match(await page.textContent('#facts'), /^dropped\.pgm: PGM, 32 × 32, 8 bits/);
  assert.match(await page.textContent('#warnings'), /rggb is assumed/);
}));

test('a gray point', () => withPage({}, async (page) => {
  await showScene(page);
  await page.click('#pick');
  await page.focus('#canvas');
  await page.keyboard.press('Enter');
  await settled(page);
  assert.match(await page.inputValue('#gains'), /^[\d.]+,[\d.]+,[\d.]+$/);
  assert.match(await page.textContent('#code'), /gains=/);
  await page.click('#reset-gains');
  await settled(page);
  assert.equal(await page.inputValue('#gains'), '');
}));

test('the keyboard alone', () => withPage({}, async (page) => {
  const focused = () => page.evaluate(() => document.activeElement.id);
  const tabTo = async (id) => {
    for (let n = 0; n < 60 && await focused() !== id; ++n) await page.keyboard.press('Tab');
    assert.equal(await focused(), id);
  };
  await tabTo('scene');
  await page.keyboard.press('Enter');
  await page.waitForTimeout(50);
  await settled(page);
  await tabTo('canvas');
  const zoom = await page.textContent('#zoom');
  await page.keyboard.press('+');
  await page.waitForFunction((before) => document.getElementById('zoom').textContent !== before, zoom);
  await page.keyboard.press('ArrowRight');
  await page.keyboard.press('Enter');
  await page.waitForSelector('#samples td');
  await page.keyboard.press('0');
  await page.waitForFunction((before) => document.getElementById('zoom').textContent === before, zoom);
  await tabTo('algorithm');
  await page.keyboard.press('Home');
  await settled(page);
  assert.equal(await page.inputValue('#algorithm'), 'bilinear');
  await tabTo('save-bytes');
  const [download] = await Promise.all([page.waitForEvent('download'), page.keyboard.press('Enter')]);
  assert.equal(statSync(await download.path()).size, 960 * 640 * 3);
}));

for (const colorScheme of ['light', 'dark'])
  for (const width of [1280, 380])
    test(`${colorScheme}, ${width} pixels wide`, () => withPage({colorScheme, viewport: {width, height: 800}}, async (page) => {
      await expectAccessible(page);
      await picture(page, `empty-${colorScheme}-${width}`);
      await showScene(page);
      await choose(page, 'other', 'bilinear');
      await page.focus('#canvas');
      await page.keyboard.press('Enter');
      await settled(page);
      await page.click('#make-sheet');
      await settled(page);
      const {scrollWidth, clientWidth} = await page.evaluate(() => document.documentElement);
      assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${scrollWidth} ${clientWidth}`);
      await expectAccessible(page);
      await picture(page, `scene-${colorScheme}-${width}`);
    }));

test('opened as a file', () => withPage({}, async (page) => {
  await showScene(page);
  await page.click('#selftest');
  await settled(page);
  assert.match(await page.textContent('#selftest-result'), /^All /);
}, pathToFileURL(join(folder, 'try.html')).href));
