const HEADER = 20;
const JPEG = 1;

/** The fields of a picture frame and its coded pixels; null for a message that is none. */
export function parseFrame(bytes) {
  if (bytes.byteLength <= HEADER || bytes[0] !== 3 || bytes[1] !== JPEG) {
    return null;
  }
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  const at = (offset) => view.getUint16(offset, true);
  const frame = {
    number: view.getUint32(4, true),
    x: at(8),
    y: at(10),
    width: at(12),
    height: at(14),
    pictureWidth: at(16),
    pictureHeight: at(18),
    pixels: bytes.subarray(HEADER),
  };
  const sized = frame.width > 0 && frame.height > 0;
  const fits =
    frame.x + frame.width <= frame.pictureWidth && frame.y + frame.height <= frame.pictureHeight;
  return sized && fits ? frame : null;
}

const decodeJpeg = (pixels) => createImageBitmap(new Blob([pixels], { type: 'image/jpeg' }));

/** Draws the frames of the picture on a canvas, in the order in which they came.
 *
 *  `resized` is told the picture's size when a frame brings another one. */
export class Picture {
  #canvas;
  #context;
  #decode;
  #resized;
  #queue = Promise.resolve();
  #drawn = 0;

  constructor({ canvas, resized, decode = decodeJpeg }) {
    this.#canvas = canvas;
    this.#context = canvas.getContext('2d', { alpha: false });
    this.#decode = decode;
    this.#resized = resized;
  }

  get drawn() {
    return this.#drawn;
  }

  get size() {
    return { width: this.#canvas.width, height: this.#canvas.height };
  }

  /** A canvas that changes its size is empty until the next frame. */
  resize(width, height) {
    if (this.#canvas.width !== width || this.#canvas.height !== height) {
      this.#canvas.width = width;
      this.#canvas.height = height;
      this.#resized({ width, height });
    }
  }

  /** Calls `shown` with the frame's number once it is drawn. One whose pixels can't be read is told as
   *  shown as well, for without it no other would come. */
  take(bytes, shown) {
    const frame = parseFrame(bytes);
    if (!frame) {
      return this.#queue;
    }
    const decoded = Promise.resolve(this.#decode(frame.pixels)).catch(() => null);
    this.#queue = this.#queue.then(async () => {
      const image = await decoded;
      if (image) {
        this.#draw(frame, image);
      }
      shown(frame.number);
    });
    return this.#queue;
  }

  #draw(frame, image) {
    this.resize(frame.pictureWidth, frame.pictureHeight);
    this.#context.drawImage(image, frame.x, frame.y, frame.width, frame.height);
    image.close?.();
    ++this.#drawn;
  }
}
