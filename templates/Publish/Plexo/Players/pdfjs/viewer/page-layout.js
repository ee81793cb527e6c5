// SPDX-License-Identifier: Apache-2.0

const gap = 14;
const comfortable = 1.25;  // how far a page is enlarged unless the learner asks for more

// Where the pages of a document lie, one below the other, in pixels. Sizes at scale 1 become known as pages are
// loaded; until then a page is taken to be as large as the first.
export class PlexoPageLayout {
  constructor(pages, size) {
    this.sizes = new Array(pages).fill(size);
    this.tops = new Float64Array(pages + 1);
    this.zoom = 'auto';
    this.arrange(size.width);
  }

  get pages() { return this.sizes.length; }
  get height() { return this.tops[this.pages]; }

  setSize(index, size) {
    const known = this.sizes[index];
    const isNew = known.width !== size.width || known.height !== size.height;
    this.sizes[index] = size;
    return isNew;
  }

  // `available` is the width that pages may take; `zoom` a scale, "fit" (that width), or "auto" (the same, as long as
  // a page isn't enlarged much).
  arrange(available, zoom = this.zoom) {
    Object.assign(this, { available, zoom });
    let top = gap;
    for (let index = 0; index < this.pages; index += 1) {
      this.tops[index] = top;
      top += this.pageHeight(index) + gap;
    }
    this.tops[this.pages] = top;
  }

  scale(index) {
    if (typeof this.zoom === 'number') return this.zoom;
    const fit = this.available / this.sizes[index].width;
    return this.zoom === 'fit' ? fit : Math.min(fit, comfortable);
  }

  pageWidth(index) { return Math.round(this.sizes[index].width * this.scale(index)); }
  pageHeight(index) { return Math.round(this.sizes[index].height * this.scale(index)); }

  // The page at this height; the next one, for a gap.
  indexAt(y) {
    let low = 0;
    let high = this.pages - 1;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (this.tops[middle] + this.pageHeight(middle) > y) high = middle;
      else low = middle + 1;
    }
    return low;
  }

  // The indexes of all pages between two heights.
  between(top, bottom) {
    const result = [];
    for (let index = this.indexAt(top); index < this.pages && this.tops[index] < bottom; index += 1) result.push(index);
    return result;
  }

  // The pages of which at least half is to be seen, or which fill at least half of the view.
  mostlyVisible(top, viewHeight) {
    return this.between(top, top + viewHeight).filter((index) => {
      const height = this.pageHeight(index);
      const seen = Math.min(top + viewHeight, this.tops[index] + height) - Math.max(top, this.tops[index]);
      return seen >= Math.min(height, viewHeight) / 2;
    });
  }
}
