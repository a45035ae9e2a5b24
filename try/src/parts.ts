// Where worker and engine come from: files beside the page, or the page itself.

export interface Parts {
  workerUrl: string;
  engine: ArrayBuffer;
}

const textOf = (id: string) => document.getElementById(id)!.textContent!;

async function inlined(): Promise<Parts> {
  const worker = new Blob([textOf('worker-source')], {type: 'text/javascript'});
  const engine = Uint8Array.from(atob(textOf('engine-bytes')), (character) => character.charCodeAt(0));
  return {workerUrl: URL.createObjectURL(worker), engine: engine.buffer};
}

async function beside(): Promise<Parts> {
  const response = await fetch('engine.wasm');
  if (!response.ok) throw new Error(`engine.wasm: ${response.status} ${response.statusText}`);
  return {workerUrl: 'worker.js', engine: await response.arrayBuffer()};
}

export const startOf = (): Promise<Parts> => INLINE ? inlined() : beside();
