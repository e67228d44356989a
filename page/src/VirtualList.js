// A scrolled list whose rows exist only while they can be seen. Rows are of one height; a list too tall for a browser's
// elements is scrolled in larger steps. `load(from, count)` resolves to the rows' data, `draw(data, index)` makes the
// element of one.
const kTallest = 8e6;
const kMargin = 8;

export class VirtualList {
    constructor(viewport, { rowHeight, load, draw }) {
        this.viewport_ = viewport;
        this.rowHeight = rowHeight;
        this.load_ = load;
        this.draw_ = draw;
        this.count = 0;
        this.version_ = 0;
        this.space_ = viewport.ownerDocument.createElement("div");
        this.space_.className = "space";
        this.space_.setAttribute("role", "presentation");
        this.rows_ = viewport.ownerDocument.createElement("div");
        this.rows_.className = "rows";
        this.rows_.setAttribute("role", "rowgroup");
        this.space_.append(this.rows_);
        viewport.append(this.space_);
        viewport.addEventListener("scroll", () => this.refresh());
        new ResizeObserver(() => this.refresh()).observe(viewport);
    }

    // Rows changed in number or content.
    reset(count) {
        this.count = count;
        this.space_.style.height = `${Math.min(count * this.rowHeight, kTallest)}px`;
        return this.refresh(true);
    }

    get perPage() {
        return Math.max(1, Math.floor(this.viewport_.clientHeight / this.rowHeight) - 1);
    }
    get first_() {
        const { scrollTop, scrollHeight, clientHeight } = this.viewport_;
        if (this.count * this.rowHeight <= kTallest) return Math.floor(scrollTop / this.rowHeight);
        const share = scrollTop / Math.max(1, scrollHeight - clientHeight);
        return Math.floor(share * Math.max(0, this.count - this.perPage));
    }

    async refresh(force = false) {
        const first = Math.max(0, this.first_ - kMargin);
        const wanted = Math.min(this.count - first, this.perPage + 2 * kMargin + 2);
        if (!force && this.shown_ && this.shown_.first === first && this.shown_.wanted === wanted) return;
        const version = ++this.version_;
        const data = wanted > 0 ? await this.load_(first, wanted) : [];
        if (version !== this.version_) return;
        this.shown_ = { first, wanted };
        this.rows_.replaceChildren(...data.map((row, i) => this.draw_(row, first + i)));
        const isScaled = this.count * this.rowHeight > kTallest;
        const top = isScaled ? this.viewport_.scrollTop - (this.first_ - first) * this.rowHeight : first * this.rowHeight;
        this.rows_.style.transform = `translateY(${Math.max(0, top)}px)`;
    }

    // Scrolls as little as makes the row seen; resolves when its element is there.
    async reveal(index) {
        const { viewport_: viewport, rowHeight } = this;
        if (this.count * rowHeight > kTallest) {
            const share = index / Math.max(1, this.count - this.perPage);
            if (index < this.first_ || index >= this.first_ + this.perPage)
                viewport.scrollTop = Math.min(1, share) * (viewport.scrollHeight - viewport.clientHeight);
        } else if (index * rowHeight < viewport.scrollTop) {
            viewport.scrollTop = index * rowHeight;
        } else if ((index + 1) * rowHeight > viewport.scrollTop + viewport.clientHeight) {
            viewport.scrollTop = (index + 1) * rowHeight - viewport.clientHeight;
        }
        await this.refresh(true);
    }
}
