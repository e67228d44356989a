import { element } from "./dom.js";
import { VirtualList } from "./VirtualList.js";

const kDeepestIndent = 12;

// The definitions of a file as a tree in a table. One row is the selected one; the arrow keys walk over the rows.
// `actions`: load, select(row), fold(row, isOpen), enter(), remove(), add(), move(by).
export class Tree {
    constructor(grid, actions) {
        this.grid_ = grid;
        this.actions_ = actions;
        this.index_ = 0;
        this.data_ = new Map();
        this.list_ = new VirtualList(grid.querySelector(".viewport"), {
            rowHeight: 26,
            load: async (from, count) => {
                const rows = await actions.load(from, count);
                this.data_ = new Map(rows.map((row, i) => [from + i, row]));
                return rows;
            },
            draw: (row, index) => this.draw_(row, index),
        });
        grid.addEventListener("keydown", (event) => this.onKey_(event));
    }

    // The rows changed; `index` is the one the keys start from, which is selected unless the header is.
    async reset(count, index, isSelected) {
        this.grid_.setAttribute("aria-rowcount", count + 1);
        this.index_ = Math.max(0, Math.min(index, count - 1));
        this.isSelected_ = isSelected;
        await this.list_.reset(count);
        if (count) await this.list_.reveal(this.index_);
        this.mark_();
    }

    async select(index) {
        if (!this.list_.count) return;
        this.isSelected_ = true;
        this.index_ = Math.max(0, Math.min(index, this.list_.count - 1));
        await this.list_.reveal(this.index_);
        this.mark_();
        const row = this.data_.get(this.index_);
        if (row) this.actions_.select(row.row);
    }

    mark_() {
        for (const row of this.grid_.querySelectorAll('[aria-selected="true"]')) row.setAttribute("aria-selected", "false");
        const row = document.getElementById(`row-${this.index_}`);
        if (row) row.setAttribute("aria-selected", String(this.isSelected_));
        if (row) this.grid_.setAttribute("aria-activedescendant", row.id);
        else this.grid_.removeAttribute("aria-activedescendant");
    }

    draw_(row, index) {
        const cell = (name, text, numeric) =>
            element("span", { role: "gridcell", class: `${name}${numeric ? " number" : ""}`, title: text }, text);
        const code = cell("code", row.code);
        const indent = Math.min(row.level - 1, kDeepestIndent);
        code.style.paddingInlineStart = `${0.4 + indent * 1.1}em`;
        if (row.level - 1 > kDeepestIndent) code.prepend(element("small", { class: "level" }, `${row.level}: `));
        const toggle = element("span", { class: "toggle", "aria-hidden": true }, row.members ? (row.open ? "▾" : "▸") : "");
        toggle.addEventListener("click", (event) => {
            event.stopPropagation();
            this.actions_.fold(row.row, !row.open);
        });
        code.prepend(toggle);
        return element(
            "div",
            {
                role: "row",
                id: `row-${index}`,
                class: row.isFaulty ? "faulty" : null,
                "aria-rowindex": index + 2,
                "aria-level": row.level,
                "aria-expanded": row.members ? String(row.open) : null,
                "aria-selected": String(this.isSelected_ && index === this.index_),
                onclick: () => this.select(index),
                ondblclick: () => this.actions_.enter(),
            },
            code,
            cell("name", row.name),
            cell("description", row.description),
            cell("multiplier", row.multiplier, true),
            cell("members", row.members ? String(row.members) : "", true),
        );
    }

    onKey_(event) {
        const row = this.data_.get(this.index_);
        const { perPage, count } = this.list_;
        const command = event.altKey ? `Alt+${event.key}` : event.key;
        const steps = {
            ArrowDown: () => this.select(this.index_ + 1),
            ArrowUp: () => this.select(this.index_ - 1),
            PageDown: () => this.select(this.index_ + perPage),
            PageUp: () => this.select(this.index_ - perPage),
            Home: () => this.select(0),
            End: () => this.select(count - 1),
            ArrowRight: () => (row && row.members && !row.open ? this.actions_.fold(row.row, true) : this.select(this.index_ + 1)),
            ArrowLeft: () => (row && row.members && row.open ? this.actions_.fold(row.row, false) : this.toParent_(row)),
            Enter: () => this.actions_.enter(),
            Insert: () => this.actions_.add(),
            Delete: () => this.actions_.remove(),
            "Alt+ArrowUp": () => this.actions_.move(-1),
            "Alt+ArrowDown": () => this.actions_.move(1),
        };
        if (!steps[command] || event.ctrlKey || event.metaKey) return;
        event.preventDefault();
        steps[command]();
    }

    async toParent_(row) {
        if (row && row.level > 1) this.select(await this.actions_.indexOf(row.parent));
    }
}
