// The form, as options of the program.
import type {Algorithm, Plan, Prepared} from './protocol.ts';

export function element<T extends HTMLElement>(id: string): T {
  return document.getElementById(id) as T;
}

const value = (id: string) => element<HTMLInputElement | HTMLSelectElement>(id).value.trim();

const option = (name: string, id: string) => value(id) ? [name, value(id)] : [];

export class Controls {
  readonly form = element<HTMLFormElement>('controls');
  private algorithms: Algorithm[] = [];

  // `onFrame` is called when the frame is described anew, `onPicture` when the picture is.
  constructor(onFrame: () => void, onPicture: () => void) {
    this.form.addEventListener('submit', (event) => event.preventDefault());
    this.form.addEventListener('change', ({target}) => {
      const {id} = target as HTMLElement;
      this.adapt();
      if (['phase', 'bits', 'format'].includes(id)) onFrame();
      else onPicture();
    });
    this.adapt();
  }

  setAlgorithms(algorithms: Algorithm[]): void {
    this.algorithms = algorithms;
    for (const id of ['algorithm', 'other'])
      for (const {name} of algorithms) element<HTMLSelectElement>(id).add(new Option(name));
    element<HTMLSelectElement>('algorithm').value = 'directional';
    this.adapt();
  }

  names(): string[] {
    return this.algorithms.map(({name}) => name);
  }

  // What describes the frame.
  inputWords(): string[] {
    const words = value('format').split(/\s+/).filter(Boolean);
    for (const [name, id] of [['--phase', 'phase'], ['--bits', 'bits']]) {
      if (!value(id)) continue;
      const at = words.indexOf(name);
      if (at < 0) words.push(name, value(id));
      else words[at + 1] = value(id);
    }
    return words;
  }

  plan(isMono: boolean, algorithm = value('algorithm')): Plan {
    const command = value('command') as Plan['command'];
    const depth = value('depth');
    const words = [...isMono ? [] : ['-a', algorithm],
                   ...command === 'develop' ? ['--look', this.look()] : this.preparation(isMono),
                   ...isMono ? [] : ['--edges', value('edges')],
                   ...depth === '16' || command === 'convert' ? ['--depth', depth] : []];
    return {command, words};
  }

  other(): string {
    return value('other');
  }

  setGains(gains: number[] | undefined): void {
    element<HTMLInputElement>('gains').value = gains ? gains.map((gain) => gain.toFixed(4)).join(',') : '';
  }

  // Before another file.
  reset(): void {
    this.form.reset();
    element<HTMLSelectElement>('algorithm').value = 'directional';
    this.adapt();
  }

  // Shows what was decided where nothing is given.
  showDecided({look}: Prepared): void {
    const show = (id: string, text: string | undefined) => {
      element<HTMLInputElement>(id).placeholder = text === undefined ? 'auto' : `auto: ${text}`;
    };
    const black = look?.black ?? [];
    show('black', look && (black.every((level) => level === black[0]) ? String(black[0]) : black.join(':')));
    show('white', look && String(look.white));
    show('gains', look?.gains?.map((gain) => gain.toFixed(3)).join(', '));
    show('exposure', look && look.exposure.toFixed(3));
    if (!look) element<HTMLInputElement>('gains').placeholder = 'none';
    if (!look) element<HTMLInputElement>('black').placeholder = '0';
  }

  private look(): string {
    const parts = ['black', 'white', 'gains', 'exposure', 'curve'].filter((id) => value(id))
        .map((id) => `${id}=${id === 'gains' ? value(id).replaceAll(',', ':').replaceAll(' ', '') : value(id)}`);
    return [value('look'), ...parts].join(',');
  }

  private preparation(isMono: boolean): string[] {
    return [...option('--black', 'black'), ...isMono ? [] : option('--wb', 'gains'), ...option('--curve', 'tone')];
  }

  private adapt(): void {
    const isDevelop = value('command') === 'develop';
    for (const part of document.querySelectorAll<HTMLElement>('.develop')) part.hidden = !isDevelop;
    for (const part of document.querySelectorAll<HTMLElement>('.convert')) part.hidden = isDevelop;
    element('use').textContent = this.algorithms.find(({name}) => name === value('algorithm'))?.use ?? '';
  }
}
