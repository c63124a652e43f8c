// Where the picture lies on its stage, and which point of it a pointer is at.

/** The largest box of the picture's shape in the middle of the stage; sizes in CSS pixels. A stage or
 *  a picture without a size gives a box without one. */
export function fitted(stage, picture) {
  if (!(stage.width > 0 && stage.height > 0 && picture.width > 0 && picture.height > 0)) {
    return { x: 0, y: 0, width: 0, height: 0 };
  }
  const ratio = Math.min(stage.width / picture.width, stage.height / picture.height);
  const width = picture.width * ratio;
  const height = picture.height * ratio;
  return { x: (stage.width - width) / 2, y: (stage.height - height) / 2, width, height };
}

function within(value, largest) {
  return Math.min(Math.max(value, 0), Math.max(largest, 0));
}

/** A pointer at (`x`, `y`) of the stage as whole units of a record. A point outside the picture is
 *  moved to its edge and has `inside` false. */
export function pictureUnits(box, picture, scale, x, y) {
  if (!(box.width > 0 && box.height > 0)) {
    return { x: 0, y: 0, inside: false };
  }
  const across = ((x - box.x) / box.width) * picture.width;
  const down = ((y - box.y) / box.height) * picture.height;
  const inside = across >= 0 && across < picture.width && down >= 0 && down < picture.height;
  return {
    x: within(Math.round(across * scale), picture.width * scale - 1),
    y: within(Math.round(down * scale), picture.height * scale - 1),
    inside,
  };
}
