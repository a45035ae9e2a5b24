// The two workers. Each has the whole frame and makes half of the rows.
import type {Converted, Functions, Name, Plan, Prepared, Reply} from './protocol.ts';

type Answer<N extends Name> = Promise<ReturnType<Functions[N]>>;

class Helper {
  private readonly worker: Worker;
  private readonly waiting = new Map<number, (reply: Reply) => void>();
  private count = 0;

  constructor(url: string) {
    this.worker = new Worker(url);
    this.worker.onmessage = ({data}: MessageEvent<Reply>) => {
      this.waiting.get(data.id)?.(data);
      this.waiting.delete(data.id);
    };
  }

  call<N extends Name>(name: N, ...args: Parameters<Functions[N]>): Answer<N> {
    const id = ++this.count;
    return new Promise((resolve, reject) => {
      this.waiting.set(id, ({result, error}) =>
        error === undefined ? resolve(result as ReturnType<Functions[N]>) : reject(new Error(error)));
      this.worker.postMessage({id, name, args});
    });
  }
}

export class Pool {
  private readonly helpers: Helper[];

  constructor(url: string) {
    this.helpers = [new Helper(url), new Helper(url)];
  }

  // One of the workers.
  one<N extends Name>(name: N, ...args: Parameters<Functions[N]>): Answer<N> {
    return this.helpers[0].call(name, ...args);
  }

  // Both; returns what the first says.
  async both<N extends Name>(name: N, ...args: Parameters<Functions[N]>): Answer<N> {
    const answers = await Promise.allSettled(this.helpers.map((helper) => helper.call(name, ...args)));
    for (const answer of answers) if (answer.status === 'rejected') throw answer.reason;
    return (answers[0] as PromiseFulfilledResult<ReturnType<Functions[N]>>).value;
  }

  // Both at once, each for its half of the rows; the first for all, if rows depend on each other.
  async convert(plan: Plan, {height, rows}: Prepared): Promise<Converted> {
    const half = rows ? Math.min(Math.ceil(height / 4) * 2, height) : height;
    const jobs = [this.helpers[0].call('convert', plan, 0, half)];
    if (half < height) jobs.push(this.helpers[1].call('convert', plan, half, height - half));
    const parts = await Promise.all(jobs);
    return {tiles: parts.flatMap(({tiles}) => tiles),
            milliseconds: Math.max(...parts.map(({milliseconds}) => milliseconds))};
  }
}
