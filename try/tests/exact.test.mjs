// Every byte that the page saves is the program's, and so are the samples that it shows.
import assert from 'node:assert/strict';
import {execFileSync} from 'node:child_process';
import {readFileSync} from 'node:fs';
import {join} from 'node:path';
import {after, test} from 'node:test';
import {decode} from 'fast-png';
import {choose, give, launch, openPage, program, saved, scratch, serve, settled, vistrel} from './browser.mjs';
import {npy, pgm, random, scene, tiff} from './frames.mjs';

const server = await serve();
const browser = await launch();
const view = await openPage(browser, server.address);
after(async () => {
  await browser.close();
  server.close();
});

const seed = Number(process.env.VISTREL_BROWSER_SEED ?? 1);
const chance = random(seed);
const oneOf = (all) => all[Math.floor(chance() * all.length)];
const between = (least, most) => least + Math.floor(chance() * (most - least + 1));

// What the program makes of the same file, as the page's own command line asks for it.
async function programs(path, ending) {
  const code = await view.page.textContent('#code');
  const words = code.match(/'[^']*'|\S+/g).slice(1).map((word) => word.replaceAll("'", ''));
  words[1] = path;
  const made = join(scratch, `made.${ending}`);
  words[words.indexOf('-o') + 1] = made;
  execFileSync(program, [...words, '--overwrite'], {stdio: 'pipe'});
  return readFileSync(made);
}

async function expectSame(path) {
  assert.equal(await view.page.isVisible('#message'), false, await view.page.textContent('#message'));
  const expected = await programs(path, 'raw');
  assert.equal(Buffer.compare(await saved(view.page, 'save-bytes'), expected), 0,
               await view.page.textContent('#code'));
}

const algorithms = ['bilinear', 'edge', 'near', 'laroche', 'hamilton', 'vng', 'cok', 'kimmel', 'grouping', 'ahd', 'directional'];

test(`random frames, seed ${seed}`, async (t) => {
  const limits = JSON.parse(vistrel('algorithms', '--json'));
  for (let n = 0; n < 12; ++n) {
    const algorithm = algorithms[n % algorithms.length];
    const most = limits.find(({name}) => name === algorithm).max_bits;
    const bits = between(8, most), width = between(24, 900), height = between(24, 1300);
    const phase = oneOf(['rggb', 'bggr', 'grbg', 'gbrg']);
    const command = oneOf(['develop', 'convert']), edges = oneOf(['padded', 'native']);
    const depth = bits > 8 ? oneOf(['8', '16']) : '8';
    await t.test(`${width}x${height}, ${bits} bits, ${phase}, ${command}, ${algorithm}, ${edges}, ${depth}`, async () => {
      const noise = random(n);
      const path = pgm('random.pgm', width, height, bits, (i) =>
        Math.floor((0.2 + 0.3 * noise() + 0.5 * (i % width) / width) * (2 ** bits - 1)));
      await give(view.page, path);
      for (const [id, value] of Object.entries({phase, command, algorithm, edges, depth}))
        await choose(view.page, id, value);
      await expectSame(path);
    });
  }
});

test('parts of a look, and preparation', async () => {
  const path = scene('parts.pgm', '-s', '300x200', '--bits', '12', '--phase', 'gbrg');
  await give(view.page, path);
  for (const [id, value] of [['phase', 'gbrg'], ['black', '60'], ['white', '3900'], ['gains', '1.5,1,2'], ['exposure', '1.25'], ['curve', 'asinh:50']])
    await choose(view.page, id, value);
  await expectSame(path);
  await choose(view.page, 'command', 'convert');
  await expectSame(path);
  await choose(view.page, 'gains', 'auto');
  await expectSame(path);
});

test('algorithms of 10 bits say what to do with more', async () => {
  const path = scene('bits.pgm', '-s', '200x100', '--bits', '12');
  await give(view.page, path);
  await choose(view.page, 'command', 'convert');
  await choose(view.page, 'algorithm', 'hamilton');
  assert.match(await view.page.textContent('#message'), /at most 10 bits.*--depth reduce10/);
  await choose(view.page, 'depth', 'reduce10');
  await expectSame(path);
});

test('DNGs of known and unknown cameras', async () => {
  for (const [name, ...words] of [['warm.dng', '--camera'], ['ideal.dng'], ['eight.dng', '--bits', '8', '--phase', 'grbg']]) {
    const path = scene(name, '-s', '400x300', ...words);
    await give(view.page, path);
    await expectSame(path);
  }
  const unknown = join(scratch, 'unknown.dng');
  vistrel('convert', scene('plain.pgm', '-s', '400x300'), '--phase', 'rggb', '--mosaic', '--overwrite', '-o', unknown);
  await give(view.page, unknown);
  await expectSame(unknown);
});

test('a big-endian TIFF', async () => {
  const path = tiff('gray.tif', 90, 70, (i) => (i * 9973) % 65536);
  await give(view.page, path);
  await choose(view.page, 'phase', 'bggr');
  await expectSame(path);
});

test('NumPy’s arrays of 8 and 16 bits', async () => {
  for (const [name, bytes, most] of [['eight.npy', 1, 256], ['sixteen.npy', 2, 65536]]) {
    const path = npy(name, 75, 58, bytes, (i) => (i * 7919) % most);
    await give(view.page, path);
    assert.match(await view.page.textContent('#facts'), new RegExp(`75 × 58, ${8 * bytes} bits`));
    await choose(view.page, 'phase', 'grbg');
    await expectSame(path);
    await choose(view.page, 'command', 'convert');
    await expectSame(path);
  }
});

test('gray PNGs of 8 and 16 bits, mono', async () => {
  for (const [name, ...words] of [['twelve.png', '--bits', '12'], ['eight.png', '--bits', '8'], ['mono.pgm', '--phase', 'mono']]) {
    const path = scene(name, '-s', '320x240', ...words);
    await give(view.page, path);
    if (name !== 'mono.pgm') await choose(view.page, 'phase', 'rggb');
    else await choose(view.page, 'phase', 'mono');
    await expectSame(path);
  }
});

test('the scene is that of the program', async () => {
  await view.page.click('#scene');
  await settled(view.page);
  const path = scene('scene.dng', '--camera', '-s', '960x640');
  const expected = join(scratch, 'scene.raw');
  vistrel('develop', path, '--overwrite', '-o', expected);
  assert.equal(Buffer.compare(await saved(view.page, 'save-bytes'), readFileSync(expected)), 0);
});

test('a saved PNG has the samples of the program’s', async () => {
  const path = scene('png.pgm', '-s', '301x201', '--bits', '12');
  for (const command of ['develop', 'convert'])
    for (const depth of ['8', '16']) {
      await give(view.page, path);
      for (const [id, value] of Object.entries({phase: 'rggb', command, depth})) await choose(view.page, id, value);
      const mine = decode(await saved(view.page, 'save-png')), theirs = decode(await programs(path, 'png'));
      assert.deepEqual([mine.width, mine.height, mine.depth], [theirs.width, theirs.height, theirs.depth]);
      assert.deepEqual(mine.data, theirs.data);
    }
});

test('samples under the pointer', async () => {
  const width = 64, height = 48;
  const path = pgm('pointer.pgm', width, height, 12, (i) => (i * 37) % 4096);
  await give(view.page, path);
  await choose(view.page, 'command', 'convert');
  await choose(view.page, 'depth', '16');
  await choose(view.page, 'algorithm', 'bilinear');
  await view.page.focus('#canvas');
  await view.page.keyboard.press('Enter');
  await settled(view.page);
  const [, x, y] = (await view.page.textContent('#samples caption')).match(/column (\d+), row (\d+)/).map(Number);
  const cells = await view.page.$$eval('#samples td', (all) => all.map((cell) => Number(cell.textContent)));
  const expected = [];
  for (let j = y - 2; j <= y + 2; ++j)
    for (let i = x - 2; i <= x + 2; ++i) expected.push(((j * width + i) * 37) % 4096);
  assert.deepEqual(cells, expected);
  const picture = await programs(path, 'raw');  // blue, green, red
  const sample = (channel) => picture.readUInt16LE(2 * (3 * (y * width + x) + channel));
  const shown = (await view.page.textContent('#samples .colour')).match(/\d+/g).map(Number);
  assert.deepEqual(shown, [sample(2), sample(1), sample(0), 4095]);
});

test('the selftest', async () => {
  await view.page.click('#selftest');
  await settled(view.page);
  const [count] = vistrel('selftest').toString().match(/\d+/);
  assert.equal(await view.page.textContent('#selftest-result'),
               `All ${count} conversions have the hashes of the reference.`);
});

test('no complaints', () => assert.deepEqual(view.faults, []));
