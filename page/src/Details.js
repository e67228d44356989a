import { element } from "./dom.js";

// The fields of the header or of one definition, each with its value to edit and the limits of its field.
// `actions`: put(row, name, text) resolves, or rejects with what would fit; mark(field) shows the field's bytes.
export class Details {
    constructor(form, actions) {
        this.form_ = form;
        this.actions_ = actions;
        form.addEventListener("submit", (event) => event.preventDefault());
    }

    show(row, title, fields) {
        this.shown_ = row;
        this.form_.replaceChildren(element("h2", {}, title), ...fields.map((field) => this.row_(field)));
    }

    // The input of a field takes the focus; without a name the first one.
    focus(name) {
        const input = name ? this.form_.querySelector(`[name="${CSS.escape(name)}"]`) : this.form_.querySelector("input");
        if (input) input.focus();
        return Boolean(input);
    }

    row_(field) {
        const id = `field-${field.name}`;
        const isMissing = field.present === 0 && field.length > 0;
        const input = element("input", {
            id,
            name: field.name,
            value: field.value,
            "aria-describedby": `${id}-hint ${id}-note`,
            autocomplete: "off",
            spellcheck: "false",
            inputmode: field.least === 0 ? "numeric" : null,
            disabled: isMissing,
        });
        const hint = element("span", { id: `${id}-hint`, class: "hint" }, this.limit_(field, field.value));
        const note = element("span", { class: "note", id: `${id}-note` }, field.note);
        const fault = element("span", { class: "fault", role: "alert" });
        const line = element("div", { class: "field" }, element("label", { for: id }, field.name), input, hint, note, fault);
        input.addEventListener("input", () => (hint.textContent = this.limit_(field, input.value)));
        const row = this.shown_;
        const commit = async () => {
            if (input.value === field.value) return;
            try {
                fault.textContent = "";
                input.removeAttribute("aria-invalid");
                await this.actions_.put(row, field.name, input.value);
            } catch (error) {
                fault.textContent = error.message;
                input.setAttribute("aria-invalid", "true");
            }
        };
        input.addEventListener("change", commit);
        input.addEventListener("keydown", (event) => {
            if (event.key === "Enter") commit();
            if (event.key === "Escape" && input.value !== field.value) {
                input.value = field.value;
                input.removeAttribute("aria-invalid");
                fault.textContent = "";
                hint.textContent = this.limit_(field, input.value);
            }
        });
        for (const happening of ["focusin", "mouseenter"]) line.addEventListener(happening, () => this.actions_.mark(field));
        return line;
    }

    // "12 of 19 characters", "0 to 255".
    limit_(field, text) {
        if (field.most !== undefined) return `${field.least} to ${field.most}`;
        if (field.max === undefined) return "";
        return `${[...text].length} of ${field.max} characters`;
    }
}
