// A real browser with the page, and the program to compare with.
import {execFileSync} from 'node:child_process';
import {createReadStream, existsSync} from 'node:fs';
import {readFile} from 'node:fs/promises';
import {createServer} from 'node:http';
import {extname, join, normalize} from 'node:path';
import {chromium} from 'playwright-core';

const kTypes = {'.html': 'text/html', '.js': 'text/javascript', '.css': 'text/css', '.wasm': 'application/wasm'};

function given(name) {
  if (!process.env[name]) throw new Error(`${name} is not set`);
  return process.env[name];
}

export const folder = given('VISTREL_TRY');  // where the page was built
export const scratch = given('VISTREL_SCRATCH');
export const program = given('VISTREL_PROGRAM');
export const buildFolder = given('VISTREL_BUILD');  // of library and Python package

const kPatience = 120_000;  // in milliseconds, on machines that are busy

// A server without any special headers. Returns its address.
export async function serve(root = folder) {
  const server = createServer((request, response) => {
    const path = normalize(new URL(request.url, 'http://localhost').pathname);
    const file = join(root, path.endsWith('/') ? `${path}index.html` : path);
    if (!existsSync(file)) return response.writeHead(404).end();
    response.writeHead(200, {'Content-Type': kTypes[extname(file)] ?? 'application/octet-stream'});
    createReadStream(file).pipe(response);
  });
  await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
  return {address: `http://127.0.0.1:${server.address().port}/`, close: () => server.close()};
}

export const launch = () => chromium.launch({
  executablePath: process.env.VISTREL_CHROMIUM ?? '/usr/bin/chromium',
  args: ['--no-sandbox', '--enable-precise-memory-info'],
});

// A page that is ready, and what it has complained about.
export async function openPage(browser, address, options = {}) {
  const context = await browser.newContext({viewport: {width: 1280, height: 900}, ...options});
  context.setDefaultTimeout(kPatience);
  const page = await context.newPage();
  const faults = [];
  page.on('console', (message) => message.type() === 'error' && faults.push(message.text()));
  page.on('pageerror', (error) => faults.push(String(error)));
  const own = new URL(address);
  page.on('request', (request) => {
    const {protocol, host} = new URL(request.url());
    if (protocol !== 'data:' && protocol !== 'blob:' && (protocol !== own.protocol || host !== own.host))
      faults.push(`asks another host for ${request.url()}`);
  });
  await page.goto(address);
  await page.waitForSelector('html[data-ready]');
  return {page, faults, close: () => context.close()};
}

// Opens the page with the scene. Returns when its picture was first drawn, in milliseconds since the
// page was asked for.
export async function firstPicture(browser, address) {
  const view = await openPage(browser, `${address}#scene`);
  await view.page.waitForFunction(() => performance.getEntriesByName('picture').length);
  const time = await view.page.evaluate(() => performance.getEntriesByName('picture')[0].startTime);
  await view.close();
  return time;
}

// Waits until nothing is converted any more.
export async function settled(page) {
  await page.waitForFunction(() => document.getElementById('busy').hidden);
}

export async function give(page, path) {
  await page.setInputFiles('#file', path);
  await page.waitForTimeout(50);
  await settled(page);
}

export async function choose(page, id, value) {
  const isSelect = await page.$eval(`#${id}`, (element) => element.tagName === 'SELECT');
  if (isSelect) await page.selectOption(`#${id}`, value);
  else await page.fill(`#${id}`, value);
  await page.dispatchEvent(`#${id}`, 'change');
  await settled(page);
}

export async function saved(page, id) {
  const [download] = await Promise.all([page.waitForEvent('download'), page.click(`#${id}`)]);
  return readFile(await download.path());
}

export const vistrel = (...words) => execFileSync(program, words, {stdio: ['ignore', 'pipe', 'pipe']});
