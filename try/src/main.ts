// The page: files in, pictures out.
import {Controls, element} from './controls.ts';
import {startOf} from './parts.ts';
import {addCandidate, addReason, addToSheet, showHistogram, showProbe} from './panels.ts';
import {Pool} from './pool.ts';
import type {FrameInfo, Plan, Prepared, Scene} from './protocol.ts';
import * as recipes from './recipe.ts';
import {View} from './view.ts';

const kScene: Scene = {width: 960, height: 640, bits: 12};
const kThumbnail = {width: 240, height: 160};

class Page {
  readonly controls = new Controls(() => this.run(() => this.open()), () => this.run(() => this.convert()));
  private readonly view = new View((x, y) => this.point(x, y), (x, y) => this.run(() => this.press(x, y)));
  private source: File | Scene | undefined;
  private name = '';
  private frame: FrameInfo | undefined;
  private prepared: Prepared | undefined;
  private plan: Plan | undefined;
  private language: 'shell' | 'python' | 'c' = 'shell';
  private isPicking = false;
  private isProbing = false;
  private last: Promise<void> = Promise.resolve();

  constructor(private readonly pool: Pool) {
    this.listenToFiles();
    this.listenToButtons();
  }

  // One task after the other; what fails is told to the user.
  run(task: () => Promise<void>): Promise<void> {
    this.last = this.last.then(async () => {
      element('busy').hidden = false;
      element('message').hidden = true;
      try {
        await task();
      } catch (error) {
        this.say(error instanceof Error ? error.message : String(error));
      }
      element('busy').hidden = true;
    });
    return this.last;
  }

  async take(source: File | Scene): Promise<void> {
    this.source = source;
    this.name = source instanceof File ? source.name : 'scene.dng';
    this.controls.reset();
    element('candidates').hidden = true;
    if (await this.isKnown()) await this.open();
    else await this.showCandidates(source as File);
  }

  private say(text: string): void {
    const message = element('message');
    message.textContent = this.name ? `${this.name}: ${text}` : text;
    message.hidden = false;
    message.scrollIntoView({block: 'nearest'});
  }

  // Whether the file says what it is.
  private async isKnown(): Promise<boolean> {
    try {
      this.frame = await this.pool.both('open', this.source!, []);
      return true;
    } catch (error) {
      if (error instanceof Error && error.message.startsWith('unknown kind of frame')) return false;
      throw error;
    }
  }

  private async showCandidates(file: File): Promise<void> {
    const guesses = await this.pool.one('guess', file);
    if (!guesses.length) throw new Error('Nothing in this file looks like a frame.');
    element('candidate-list').replaceChildren();
    for (const guess of guesses.slice(0, 6)) {
      const bitmap = await this.pool.one('preview', file, guess.options.split(' '));
      addCandidate(bitmap, guess, () => this.run(() => this.choose(guess.options)));
    }
    element('candidates').hidden = false;
    await this.choose(guesses[0].options);
  }

  private async choose(options: string): Promise<void> {
    element<HTMLInputElement>('format').value = options;
    await this.open();
  }

  private async open(): Promise<void> {
    let words = this.controls.inputWords();
    this.frame = await this.pool.both('open', this.source!, words);
    const assumed = !this.frame.knowsPhase;
    if (assumed) {
      element<HTMLSelectElement>('phase').value = 'rggb';
      words = this.controls.inputWords();
      this.frame = await this.pool.both('open', this.source!, words);
    }
    this.describe(assumed);
    element('empty').hidden = true;
    element('work').hidden = false;
    await this.convert();
    showHistogram(await this.pool.one('histogram'), this.frame);
  }

  private describe(assumed: boolean): void {
    const {format, width, height, bits, phase, frames, warnings} = this.frame!;
    element('facts').textContent = `${this.name}: ${format}, ${width} × ${height}, ${bits} bits, ${phase}` +
        (frames > 1 ? `, the first of ${frames} frames` : '');
    const all = assumed ? ['The file doesn’t say which colours its filters have: rggb is assumed. Choose another phase, or mono.', ...warnings] : warnings;
    element('warnings').replaceChildren(...all.map((text) => {
      const item = document.createElement('li');
      item.textContent = text;
      return item;
    }));
  }

  private isMono(): boolean {
    return this.frame!.phase === 'mono';
  }

  // What the worker decided, in place of what is to be decided.
  private async resolved(plan: Plan): Promise<[Plan, Prepared]> {
    const prepared = await this.pool.one('prepare', plan);
    if (!prepared.lookText) return [plan, prepared];
    const words = plan.words.map((word, i) => plan.words[i - 1] === '--look' ? prepared.lookText! : word);
    return [{...plan, words}, prepared];
  }

  private async convert(): Promise<void> {
    const chosen = this.controls.plan(this.isMono());
    const [plan, prepared] = await this.resolved(chosen);
    const other = this.isMono() ? '' : this.controls.other();
    const plans = other ? [plan, {...plan, words: plan.words.map((word, i) => plan.words[i - 1] === '-a' ? other : word)}] : [plan];
    const layers = [];
    for (const one of plans) layers.push(await this.pool.convert(one, prepared));
    [this.plan, this.prepared] = [plan, prepared];
    this.view.show(layers.map(({tiles}) => tiles), prepared.width, prepared.height);
    requestAnimationFrame(() => performance.mark('picture'));  // after the view has drawn it
    element('speed').textContent = `${layers.map(({milliseconds}) => milliseconds.toFixed(1)).join(' and ')} ms`;
    this.showNames(other);
    this.controls.showDecided(prepared);
    this.showRecipe();
  }

  private showNames(other: string): void {
    const name = element<HTMLSelectElement>('algorithm').value;
    for (const [id, text] of [['left-name', name], ['right-name', other]]) {
      element(id).textContent = text;
      element(id).hidden = !other;
    }
  }

  private showRecipe(): void {
    const recipe = {name: this.name, input: this.controls.inputWords(), frame: this.frame!,
                    plan: this.controls.plan(this.isMono()), prepared: this.prepared!};
    element('code').textContent = recipes[this.language](recipe);
  }

  private async press(x: number, y: number): Promise<void> {
    if (!this.isPicking) return this.probe(x, y);
    this.setPicking(false);
    this.controls.setGains(await this.pool.one('gray', this.plan!, x, y));
    await this.convert();
  }

  private setPicking(isPicking: boolean): void {
    this.isPicking = isPicking;
    element('pick').setAttribute('aria-pressed', String(isPicking));
    element('canvas').classList.toggle('picking', isPicking);
  }

  // Follows the pointer as fast as the worker answers.
  private point(x: number, y: number): void {
    if (this.isProbing || !this.plan) return;
    this.isProbing = true;
    this.probe(x, y).catch(() => undefined).finally(() => { this.isProbing = false; });
  }

  private async probe(x: number, y: number): Promise<void> {
    showProbe(x, y, await this.pool.one('probe', this.plan!, x, y), this.isMono());
  }

  private async makeSheet(): Promise<void> {
    element('sheet').replaceChildren();
    if (this.isMono()) throw new Error('A mono frame needs no algorithm.');
    const {x, y, width, height} = this.view.middle(kThumbnail.width, kThumbnail.height);
    for (const name of this.controls.names()) {
      const words = this.plan!.words.map((word, i) => this.plan!.words[i - 1] === '-a' ? name : word);
      const plan = {...this.plan!, words: [...words, '--roi', `${width}x${height}+${x}+${y}`]};
      try {
        addToSheet(await this.pool.one('thumbnail', plan), name, () => this.chooseAlgorithm(name));
      } catch (error) {
        addReason(name, error instanceof Error ? error.message : String(error));
      }
    }
  }

  private chooseAlgorithm(name: string): void {
    const select = element<HTMLSelectElement>('algorithm');
    select.value = name;
    select.dispatchEvent(new Event('change', {bubbles: true}));
  }

  private async save(kind: 'savePng' | 'saveBytes', extension: string): Promise<void> {
    const bytes = await this.pool.one(kind, this.plan!);
    const link = document.createElement('a');
    link.href = URL.createObjectURL(new Blob([bytes as BlobPart]));
    link.download = `${this.name.replace(/\.[^.]*$/, '')}-picture.${extension}`;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 10_000);
  }

  private async runSelftest(): Promise<void> {
    const result = element('selftest-result');
    result.textContent = 'Running…';
    const {combinations, differences} = await this.pool.one('selftest');
    result.textContent = differences
        ? `${differences} of ${combinations} conversions differ.`
        : `All ${combinations} conversions have the hashes of the reference.`;
  }

  private listenToFiles(): void {
    const input = element<HTMLInputElement>('file');
    const takeFile = (file: File | null | undefined) => file && this.run(() => this.take(file));
    element('choose').onclick = () => input.click();
    element('scene').onclick = () => this.run(() => this.take(kScene));
    input.onchange = () => {
      takeFile(input.files?.[0]);
      input.value = '';
    };
    document.addEventListener('dragover', (event) => {
      event.preventDefault();
      document.body.classList.add('dragging');
    });
    document.addEventListener('dragleave', () => document.body.classList.remove('dragging'));
    document.addEventListener('drop', (event) => {
      event.preventDefault();
      document.body.classList.remove('dragging');
      takeFile(event.dataTransfer?.files[0]);
    });
  }

  private listenToButtons(): void {
    element('pick').onclick = () => this.setPicking(!this.isPicking);
    element('reset-gains').onclick = () => this.run(async () => {
      this.controls.setGains(undefined);
      await this.convert();
    });
    element('make-sheet').onclick = () => this.run(() => this.makeSheet());
    element('save-png').onclick = () => this.run(() => this.save('savePng', 'png'));
    element('save-bytes').onclick = () => this.run(() => this.save('saveBytes', 'raw'));
    element('selftest').onclick = () => this.run(() => this.runSelftest());
    element('copy').onclick = () => navigator.clipboard?.writeText(element('code').textContent!);
    for (const button of document.querySelectorAll<HTMLElement>('[data-language]'))
      button.onclick = () => {
        this.language = button.dataset.language as typeof this.language;
        for (const other of document.querySelectorAll('[data-language]'))
          other.setAttribute('aria-pressed', String(other === button));
        if (this.prepared) this.showRecipe();
      };
    matchMedia('(prefers-color-scheme: dark)').onchange = () => this.frame &&
        this.run(async () => showHistogram(await this.pool.one('histogram'), this.frame!));
  }
}

async function start(): Promise<void> {
  const {workerUrl, engine} = await startOf();
  const pool = new Pool(workerUrl);
  const page = new Page(pool);
  await page.run(async () => page.controls.setAlgorithms(await pool.both('start', engine)));
  document.documentElement.dataset.ready = 'true';
  if (location.hash === '#scene') element('scene').click();
}

start().catch((error: Error) => {
  element('message').textContent = `The engine can’t be loaded: ${error.message}`;
  element('message').hidden = false;
});
