import { element, hex } from "./dom.js";
import { VirtualList } from "./VirtualList.js";

const kPerLine = 16;

// Every byte of the file. The bytes of one field are marked; a click on a byte, or the arrow keys, choose the field it
// belongs to. `actions`: load(from, count) resolves to bytes; choose(offset).
export class Bytes {
    constructor(grid, actions) {
        this.grid_ = grid;
        this.actions_ = actions;
        this.size_ = 0;
        this.marked_ = { offset: 0, length: 0 };
        this.cursor_ = 0;
        this.list_ = new VirtualList(grid, {
            rowHeight: 20,
            load: async (from, count) => {
                const bytes = await actions.load(from * kPerLine, count * kPerLine);
                return Array.from({ length: Math.ceil(bytes.length / kPerLine) }, (_, i) =>
                    bytes.subarray(i * kPerLine, (i + 1) * kPerLine));
            },
            draw: (line, index) => this.draw_(line, index),
        });
        grid.addEventListener("keydown", (event) => this.onKey_(event));
        grid.addEventListener("click", (event) => {
            const cell = event.target.closest("[data-offset]");
            if (cell) this.choose_(Number(cell.dataset.offset));
        });
    }

    async reset(size) {
        this.size_ = size;
        this.grid_.setAttribute("aria-rowcount", Math.ceil(size / kPerLine));
        await this.list_.reset(Math.ceil(size / kPerLine));
    }

    async mark({ offset, length }) {
        this.marked_ = { offset, length };
        if (length) this.cursor_ = offset;
        if (this.size_) await this.list_.reveal(Math.floor(Math.min(offset, this.size_ - 1) / kPerLine));
    }

    choose_(offset) {
        this.cursor_ = Math.max(0, Math.min(offset, this.size_ - 1));
        this.actions_.choose(this.cursor_);
    }

    draw_(line, index) {
        const start = index * kPerLine;
        const { offset, length } = this.marked_;
        const row = element("div", { role: "row", "aria-rowindex": index + 1 });
        row.append(element("span", { role: "rowheader", class: "offset" }, hex(start, 8)));
        let text = "";
        line.forEach((byte, i) => {
            const at = start + i;
            const isMarked = at >= offset && at < offset + length;
            row.append(element("span", {
                role: "gridcell", id: at === this.cursor_ ? "byte-cursor" : null, "data-offset": at,
                class: `${isMarked ? "marked" : ""}${at === this.cursor_ ? " cursor" : ""}` || null,
                "aria-selected": isMarked ? "true" : null,
            }, hex(byte, 2)));
            text += byte >= 0x20 && byte < 0x7f ? String.fromCharCode(byte) : "·";
        });
        row.append(element("span", { role: "gridcell", class: "text" }, text));
        if (row.querySelector("#byte-cursor")) this.grid_.setAttribute("aria-activedescendant", "byte-cursor");
        return row;
    }

    onKey_(event) {
        const steps = {
            ArrowRight: 1, ArrowLeft: -1, ArrowDown: kPerLine, ArrowUp: -kPerLine,
            PageDown: this.list_.perPage * kPerLine, PageUp: -this.list_.perPage * kPerLine,
            Home: -this.cursor_, End: this.size_,
        };
        if (!(event.key in steps) || event.ctrlKey || event.altKey || event.metaKey) return;
        event.preventDefault();
        this.choose_(this.cursor_ + steps[event.key]);
    }
}
