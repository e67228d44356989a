import { byId, counted, element } from "./dom.js";

// Asks a question in the page's one dialog; resolves to the value of the button that closed it, "" for none.
function ask(title, content, buttons) {
    const dialog = byId("dialog");
    dialog.replaceChildren(element("form", { method: "dialog" },
        element("h2", { id: "dialog-title" }, title), ...content,
        element("menu", {}, ...buttons.map(([value, text]) => element("button", { value }, text)))));
    dialog.returnValue = "";
    dialog.showModal();
    return new Promise((resolve) =>
        dialog.addEventListener("close", () => resolve(dialog.returnValue), { once: true }));
}

const listOf = (lines, none) =>
    lines.length
        ? element("ul", { class: "lines", tabindex: "0", "aria-label": "Details" }, ...lines.map((line) => element("li", {}, line)))
        : element("p", {}, none);

export const confirm = async (title, text, yes) =>
    (await ask(title, [element("p", {}, text)], [["", "Cancel"], ["yes", yes]])) === "yes";

export const tell = (title, lines, none) => ask(title, [listOf(lines, none)], [["", "Close"]]);

// Resolves to the version chosen, null for none. `preview(version)` resolves to what it would lose.
export async function chooseVersion(versions, current, preview) {
    const outcome = element("div", { role: "status", class: "outcome" });
    const select = element("select", { id: "version" },
        ...versions.map((version) => element("option", { value: version, selected: version === current }, String(version))));
    const show = async () => {
        const lines = await preview(Number(select.value));
        outcome.replaceChildren(
            element("p", {}, lines.length ? counted(lines.length, "change") + ":" : "Nothing is lost."),
            lines.length ? listOf(lines) : "");
    };
    select.addEventListener("change", show);
    await show();
    const answer = await ask("Convert to another version",
        [element("p", {}, element("label", { for: "version" }, "File version "), select), outcome],
        [["", "Cancel"], ["yes", "Save converted file"]]);
    return answer === "yes" ? Number(select.value) : null;
}

// Resolves to the id of the file chosen, null for none.
export async function chooseFile(title, files) {
    const select = element("select", { id: "other" }, ...files.map(({ id, name }) => element("option", { value: id }, name)));
    const answer = await ask(title, [element("p", {}, element("label", { for: "other" }, "With "), select)],
        [["", "Cancel"], ["yes", "Compare"]]);
    return answer === "yes" ? Number(select.value) : null;
}
