// The picture on a canvas: zoom, pan, and two pictures that meet at a line.
import {element} from './controls.ts';
import type {Tile} from './protocol.ts';

const kLeast = 1 / 64, kMost = 32, kStep = 1.25, kSmaller = 4;

export class View {
  private readonly canvas = element<HTMLCanvasElement>('canvas');
  private readonly split = element<HTMLInputElement>('split');
  private layers: Tile[][] = [];
  private width = 0;
  private height = 0;
  private scale = 1;  // CSS pixels a pixel
  private left = 0;   // the picture's place at the canvas's left top corner
  private top = 0;
  private isFitted = true;
  private isQueued = false;
  private readonly pointers = new Map<number, PointerEvent>();
  private moved = 0;

  // `onPoint` gets the pixel under the pointer, `onPress` the one that is pressed.
  constructor(private readonly onPoint: (x: number, y: number) => void,
              private readonly onPress: (x: number, y: number) => void) {
    new ResizeObserver(() => this.isFitted ? this.fit() : this.draw()).observe(this.canvas);
    this.split.addEventListener('input', () => this.draw());
    this.canvas.addEventListener('wheel', (event) => this.wheel(event), {passive: false});
    this.canvas.addEventListener('pointerdown', (event) => this.down(event));
    this.canvas.addEventListener('pointermove', (event) => this.move(event));
    for (const name of ['pointerup', 'pointercancel'] as const)
      this.canvas.addEventListener(name, (event) => this.up(event));
    this.canvas.addEventListener('keydown', (event) => this.key(event));
    element('zoom-in').onclick = () => this.zoom(kStep);
    element('zoom-out').onclick = () => this.zoom(1 / kStep);
    element('zoom-fit').onclick = () => this.fit();
    element('zoom-one').onclick = () => this.zoom(1 / this.scale);
  }

  // One picture, or two to compare.
  show(layers: Tile[][], width: number, height: number): void {
    for (const {full, small} of this.layers.flat()) full.close(), small.close();
    this.layers = layers;
    const isSame = width === this.width && height === this.height;
    [this.width, this.height] = [width, height];
    this.split.hidden = layers.length < 2;
    if (isSame && !this.isFitted) this.draw();
    else this.fit();
  }

  // The pixels in the middle of the view.
  middle(width: number, height: number): {x: number; y: number; width: number; height: number} {
    const w = Math.min(width, this.width), h = Math.min(height, this.height);
    const {x, y} = this.centre();
    const place = (centre: number, size: number, all: number) =>
      Math.floor(Math.min(Math.max(centre - size / 2, 0), all - size) / 2) * 2;
    return {x: place(x, w, this.width), y: place(y, h, this.height), width: w, height: h};
  }

  fit(): void {
    const {clientWidth, clientHeight} = this.canvas;
    this.scale = Math.min(clientWidth / this.width, clientHeight / this.height) || 1;
    this.left = (this.width - clientWidth / this.scale) / 2;
    this.top = (this.height - clientHeight / this.scale) / 2;
    this.isFitted = true;
    this.draw();
  }

  private centre(): {x: number; y: number} {
    return this.pixelAt(this.canvas.clientWidth / 2, this.canvas.clientHeight / 2);
  }

  private pixelAt(x: number, y: number): {x: number; y: number} {
    return {x: Math.floor(this.left + x / this.scale), y: Math.floor(this.top + y / this.scale)};
  }

  private zoom(factor: number, x = this.canvas.clientWidth / 2, y = this.canvas.clientHeight / 2): void {
    const scale = Math.min(Math.max(this.scale * factor, kLeast), kMost);
    this.left += x / this.scale - x / scale;
    this.top += y / this.scale - y / scale;
    this.scale = scale;
    this.isFitted = false;
    this.draw();
  }

  private pan(x: number, y: number): void {
    this.left += x / this.scale;
    this.top += y / this.scale;
    this.isFitted = false;
    this.draw();
  }

  private wheel(event: WheelEvent): void {
    event.preventDefault();
    this.zoom(2 ** (-event.deltaY * (event.deltaMode ? 16 : 1) / 300), event.offsetX, event.offsetY);
  }

  private down(event: PointerEvent): void {
    this.canvas.setPointerCapture(event.pointerId);
    this.pointers.set(event.pointerId, event);
    this.moved = 0;
  }

  private move(event: PointerEvent): void {
    const before = this.pointers.get(event.pointerId);
    if (!before) return this.tell(this.onPoint, event.offsetX, event.offsetY);
    const other = [...this.pointers.values()].find(({pointerId}) => pointerId !== event.pointerId);
    if (other) {
      const distance = (p: PointerEvent) => Math.hypot(p.offsetX - other.offsetX, p.offsetY - other.offsetY);
      this.zoom(distance(event) / Math.max(distance(before), 1), other.offsetX, other.offsetY);
    } else {
      this.pan(before.offsetX - event.offsetX, before.offsetY - event.offsetY);
    }
    this.moved += Math.hypot(before.offsetX - event.offsetX, before.offsetY - event.offsetY);
    this.pointers.set(event.pointerId, event);
  }

  private up(event: PointerEvent): void {
    const isPress = event.type === 'pointerup' && this.pointers.size === 1 && this.moved < 4;
    this.pointers.delete(event.pointerId);
    if (isPress) this.tell(this.onPress, event.offsetX, event.offsetY);
  }

  private key(event: KeyboardEvent): void {
    const far = 60;
    const actions: Record<string, () => void> = {
      ArrowLeft: () => this.pan(-far, 0), ArrowRight: () => this.pan(far, 0),
      ArrowUp: () => this.pan(0, -far), ArrowDown: () => this.pan(0, far),
      '+': () => this.zoom(kStep), '=': () => this.zoom(kStep), '-': () => this.zoom(1 / kStep),
      '0': () => this.fit(), '1': () => this.zoom(1 / this.scale),
      Enter: () => this.tell(this.onPress, this.canvas.clientWidth / 2, this.canvas.clientHeight / 2),
    };
    const action = event.ctrlKey || event.metaKey || event.altKey ? undefined : actions[event.key];
    if (!action) return;
    event.preventDefault();
    action();
  }

  private tell(listener: (x: number, y: number) => void, canvasX: number, canvasY: number): void {
    const {x, y} = this.pixelAt(canvasX, canvasY);
    if (x >= 0 && y >= 0 && x < this.width && y < this.height) listener(x, y);
  }

  private draw(): void {
    if (this.isQueued) return;
    this.isQueued = true;
    requestAnimationFrame(() => {
      this.isQueued = false;
      this.paint();
    });
  }

  private paint(): void {
    const {canvas, scale} = this, ratio = devicePixelRatio;
    const width = Math.round(canvas.clientWidth * ratio), height = Math.round(canvas.clientHeight * ratio);
    if (canvas.width !== width || canvas.height !== height) [canvas.width, canvas.height] = [width, height];
    const context = canvas.getContext('2d', {alpha: true})!;
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.clearRect(0, 0, width, height);
    context.imageSmoothingEnabled = scale * ratio < 1;
    const line = Math.round(width * Number(this.split.value) / 1000);
    this.layers.forEach((tiles, i) => {
      context.save();
      if (this.layers.length > 1) {
        context.beginPath();
        context.rect(i ? line : 0, 0, i ? width - line : line, height);
        context.clip();
      }
      this.paintTiles(context, tiles, scale * ratio);
      context.restore();
    });
    if (this.layers.length > 1) this.paintLine(context, line, height, ratio);
    element('zoom').textContent = this.layers.length ? `${Math.round(scale * ratio * 1000) / 10} %` : '';
  }

  private paintTiles(context: CanvasRenderingContext2D, tiles: Tile[], scale: number): void {
    const {width, height} = context.canvas;
    const at = (place: number, origin: number) => Math.round((place - origin) * scale);
    for (const tile of tiles) {
      const left = at(tile.x, this.left), right = at(tile.x + tile.width, this.left);
      const top = at(tile.y, this.top), bottom = at(tile.y + tile.height, this.top);
      if (right < 0 || bottom < 0 || left > width || top > height) continue;
      context.drawImage(scale * kSmaller <= 1 ? tile.small : tile.full, left, top, right - left, bottom - top);
    }
  }

  private paintLine(context: CanvasRenderingContext2D, line: number, height: number, ratio: number): void {
    context.fillStyle = '#000';
    context.fillRect(line - 1.5 * ratio, 0, 3 * ratio, height);
    context.fillStyle = '#fff';
    context.fillRect(line - ratio / 2, 0, ratio, height);
  }
}
