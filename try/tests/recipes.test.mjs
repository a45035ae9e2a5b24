// The code that the page prints makes the picture that it saves.
import assert from 'node:assert/strict';
import {execFileSync} from 'node:child_process';
import {readFileSync, writeFileSync} from 'node:fs';
import {join} from 'node:path';
import {fileURLToPath} from 'node:url';
import {after, test} from 'node:test';
import {decode} from 'fast-png';
import {buildFolder, choose, give, launch, openPage, saved, scratch, serve} from './browser.mjs';
import {scene} from './frames.mjs';

const root = fileURLToPath(new URL('../..', import.meta.url));
const kWidth = 240, kHeight = 160;
const server = await serve();
const browser = await launch();
const {page} = await openPage(browser, server.address);
after(async () => {
  await browser.close();
  server.close();
});

async function code(language) {
  await page.click(`[data-language=${language}]`);
  return page.textContent('#code');
}

async function pixels() {
  const {data} = decode(await saved(page, 'save-png'));
  return Buffer.from(data.buffer, data.byteOffset, data.byteLength);
}

// Runs it with the samples of a binary PGM.
function runC(text, path, bytesPerSample) {
  const source = join(scratch, 'recipe.c'), runnable = join(scratch, 'recipe'), made = join(scratch, 'recipe.raw');
  writeFileSync(source, `#include <stdio.h>
#include <stdlib.h>
${text}
int main(void) {
  static unsigned char samples[${kWidth * kHeight * bytesPerSample}], pixels[${kWidth * kHeight * 6}];
  const size_t size = fread(samples, 1, sizeof samples, stdin);
  vistrel_error error;
  if (size != sizeof samples || make_picture(samples, pixels, sizeof pixels, &error) != 0) return 1;
  return fwrite(pixels, 1, sizeof pixels, stdout) != sizeof pixels;
}
`);
  execFileSync('gcc', ['-Wall', '-Wextra', '-Werror', `-I${root}/include`, source, `-L${buildFolder}/host`, '-lvistrelhost', `-Wl,-rpath,${buildFolder}/host`, '-o', runnable]);
  const samples = readFileSync(path).subarray(-kWidth * kHeight * bytesPerSample);
  if (bytesPerSample === 2) samples.swap16();
  writeFileSync(made, execFileSync(runnable, {input: samples, maxBuffer: 2 ** 24}));
  return readFileSync(made);
}

for (const [bits, depth, command] of [[12, '8', 'develop'], [8, '8', 'convert'], [12, '16', 'develop']])
  test(`${bits} bits, ${command}, to ${depth}`, async () => {
    const path = scene('recipe.pgm', '-s', `${kWidth}x${kHeight}`, '--bits', String(bits), '--phase', 'grbg');
    await give(page, path);
    for (const [id, value] of Object.entries({phase: 'grbg', command, algorithm: 'ahd', black: '20', gains: '1.5,1,1.25', depth}))
      await choose(page, id, value);
    const expected = await pixels();
    const made = runC(await code('c'), path, bits > 8 ? 2 : 1).subarray(0, expected.length);
    assert.equal(Buffer.compare(made, expected), 0, 'C');
    execFileSync('/usr/bin/python3', ['-c', await code('python')],
                 {cwd: scratch, env: {...process.env, PYTHONPATH: join(buildFolder, 'python')}});
    const {data} = decode(readFileSync(join(scratch, 'recipe-picture.png')));
    assert.equal(Buffer.compare(Buffer.from(data.buffer, data.byteOffset, data.byteLength), expected), 0, 'Python');
  });
