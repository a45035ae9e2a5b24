// node bundle.mjs ENGINE FOLDER: bundles the page, once as files for a server, once as a single file.
import {build} from 'esbuild';
import {copyFile, readFile, writeFile} from 'node:fs/promises';

const [engine, folder] = process.argv.slice(2);
const kFiles = "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; style-src 'self'; " +
    "img-src data: blob:; connect-src 'self'; worker-src 'self'";
const kSingle = "default-src 'none'; script-src 'unsafe-inline' 'wasm-unsafe-eval' blob:; " +
    "style-src 'unsafe-inline'; img-src data: blob:; worker-src blob:";

async function bundled(entry, isInline) {
  const {outputFiles} = await build({
    entryPoints: [entry], bundle: true, minify: true, write: false, format: 'iife',
    target: 'es2022', define: {INLINE: String(isInline)}, external: ['fs', 'path', 'crypto', 'ws'],
    logLevel: 'warning', legalComments: 'inline',
  });
  return outputFiles[0].text;
}

const style = (await build({entryPoints: ['src/style.css'], minify: true, write: false}))
    .outputFiles[0].text;
const html = await readFile('src/index.html', 'utf8');

// A function as replacement keeps dollars as they are.
const filled = (parts) => Object.entries(parts).reduce(
    (page, [name, text]) => page.replace(`<!-- ${name} -->`, () => text), html);
const policy = (text) => `<meta http-equiv="Content-Security-Policy" content="${text}">`;
const script = (text, attributes = '') =>
  `<script${attributes}>${text.replaceAll('</script', '<\\/script')}</script>`;

await writeFile(`${folder}/index.html`, filled({
  policy: policy(kFiles), style: '<link rel="stylesheet" href="style.css">',
  script: '<script src="page.js"></script>',
}));
await writeFile(`${folder}/style.css`, style);
await writeFile(`${folder}/page.js`, await bundled('src/main.ts', false));
await writeFile(`${folder}/worker.js`, await bundled('src/worker.ts', false));
await copyFile(engine, `${folder}/engine.wasm`);

const bytes = (await readFile(engine)).toString('base64');
await writeFile(`${folder}/try.html`, filled({
  policy: policy(kSingle), style: `<style>${style}</style>`,
  script: script(bytes, ' type="application/octet-stream" id="engine-bytes"') +
      script(await bundled('src/worker.ts', true), ' type="text/plain" id="worker-source"') +
      script(await bundled('src/main.ts', true)),
}));
