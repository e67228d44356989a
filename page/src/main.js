import { Bytes } from "./Bytes.js";
import { Details } from "./Details.js";
import { chooseFile, chooseVersion, confirm, tell } from "./Dialogs.js";
import { byId, counted, download, element } from "./dom.js";
import { Engine } from "./Engine.js";
import { fillSheet } from "./Sheet.js";
import { Tree } from "./Tree.js";

const kHeader = -1;  // the row that stands for the header
const kLargest = 256 * 1024 * 1024;
const kMostPrintedWithoutAsking = 5000;

const engine = new Engine(byId("worker").textContent);
const files = [];  // each the summary of its document and `name`, `row` selected, `saved` state
let current = null;

const call = (name, ...parameters) => engine.call(current.id, name, ...parameters);
const say = (text) => (byId("status").textContent = text);

const tree = new Tree(byId("tree"), {
    load: (from, count) => call("rows", from, count),
    select: (row) => select(row),
    fold: async (row, isOpen) => {
        await call("fold", row, isOpen);
        await drawTree(row);
    },
    enter: () => details.focus(),
    remove: () => edit("remove", current.row),
    add: () => edit("add", current.row),
    move: (by) => edit("move", current.row, by),
    indexOf: (row) => call("indexOf", row),
});
const details = new Details(byId("details"), {
    put: (row, name, text) => change("set", row, name, text),
    mark: (field) => mark(field),
});
const bytes = new Bytes(byId("bytes"), {
    load: (from, count) => call("bytes", from, count),
    choose: async (offset) => {
        const found = await call("fieldAt", offset);
        if (found.row !== current.row) {
            await select(found.row, false);
            await drawTree(found.row);
        }
        await mark(found);
    },
});

async function mark(field) {
    for (const row of byId("details").querySelectorAll(".field.marked")) row.classList.remove("marked");
    const input = byId(`field-${field.name}`);
    if (input) input.closest(".field").classList.add("marked");
    byId("where").textContent = `${field.full || field.name}: ${counted(field.length, "byte")} at ${field.offset}`;
    await bytes.mark(field);
}

// Shows the header or one definition with its fields, and where its bytes begin.
async function select(row, marks = true) {
    current.row = row;
    const { title, fields } = await call("fields", row);
    details.show(row, title, fields);
    byId("header").setAttribute("aria-pressed", String(row === kHeader));
    if (marks && fields.length) await mark(fields[0]);
}

async function drawTree(row) {
    const index = row === kHeader ? 0 : await call("indexOf", row);
    await tree.reset((await call("summary")).visible, index, row !== kHeader);
}

// Takes over what the library says of a document after a change, and shows it.
async function update(summary) {
    Object.assign(current, summary);
    current.row = summary.row;
    for (const [id, enabled] of [["undo", summary.canUndo], ["redo", summary.canRedo], ["save", true], ["print", true],
        ["convert", summary.canConvert], ["compare", files.length > 1], ["json", true], ["csv", true], ["close", true],
        ["add", summary.canEdit], ["remove", summary.canEdit], ["up", summary.canEdit], ["down", summary.canEdit]])
        byId(id).disabled = !enabled;
    drawTabs();
    drawFindings(summary);
    await bytes.reset(summary.size);
    await drawTree(summary.row);
    await select(summary.row);
    byId("counts").textContent =
        `${counted(summary.definitions, "definition")}, version ${summary.version}, ${counted(summary.size, "byte")}`;
    byId("sheet").replaceChildren();
    if (summary.definitions <= kMostPrintedWithoutAsking) await drawSheet();
}

function drawTabs() {
    byId("tabs").replaceChildren(...files.map((file) =>
        element("button", {
            role: "tab", id: `tab-${file.id}`, "aria-selected": String(file === current), "aria-controls": "file",
            tabindex: file === current ? "0" : "-1", title: file.name,
            onclick: () => show(file),
            onkeydown: (event) => {
                const step = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
                if (step) show(files[(files.indexOf(file) + step + files.length) % files.length], true);
            },
        }, `${file.name}${file.isChanged ? " (changed)" : ""}`)));
    document.title = current ? `${current.isChanged ? "* " : ""}${current.name} - zelsketch` : "zelsketch";
    byId("welcome").hidden = Boolean(current);
    byId("file").hidden = !current;
}

function drawFindings({ findings, note }) {
    byId("findings").hidden = false;
    byId("verdict").textContent = note;
    byId("verdict").className = findings.some((finding) => finding.isDamage) ? "damaged" : "sound";
    byId("finding-list").replaceChildren(...findings.map((finding) =>
        element("li", {}, element("button", {
            type: "button", class: "link",
            onclick: async () => {
                const found = await call("fieldAt", finding.offset);
                await select(found.row, false);
                await drawTree(found.row);
                await mark(found);
                details.focus(found.name);
            },
        }, `${finding.what} (at ${finding.offset})`))));
}

async function drawSheet() {
    const { fields } = await call("fields", kHeader);
    fillSheet(byId("sheet"), current.name, fields, await call("allRows"));
}

async function show(file, takesFocus = false) {
    current = file;
    await update(await call("summary"));
    if (takesFocus) byId(`tab-${file.id}`).focus();
}

// One change of the document; rejects with what the library says.
async function change(name, ...parameters) {
    const summary = await call(name, ...parameters);
    const focused = document.activeElement && document.activeElement.name;
    await update(summary);
    if (focused) details.focus(focused);
    say(summary.said);
}

// A change asked for by a button or a key: what is refused is said on the status line.
async function edit(name, ...parameters) {
    try {
        await change(name, ...parameters);
        if (!byId("details").contains(document.activeElement)) byId("tree").focus();
    } catch (error) {
        say(error.message);
    }
}

async function open(list) {
    for (const file of list) {
        say(`Opening ${file.name}`);
        try {
            if (file.size > kLargest) throw new Error(`the file has ${counted(file.size, "byte")}, at most ${counted(kLargest, "byte")} are opened`);
            const summary = await engine.open(new Uint8Array(await file.arrayBuffer()));
            files.push({ ...summary, name: file.name });
            await show(files[files.length - 1]);
            say(`${file.name} is open`);
            byId("tree").focus();
        } catch (error) {
            say(`${file.name}: ${error.message}`);
        }
    }
}

async function close() {
    if (current.isChanged && !(await confirm("Close without saving?", `The changes of ${current.name} will be lost.`, "Close"))) return;
    const closed = current;
    files.splice(files.indexOf(closed), 1);
    current = null;
    await engine.close(closed.id);
    if (files.length) return show(files[files.length - 1]);
    drawTabs();
    byId("open").focus();
}

const stem = () => current.name.replace(/\.[^.]*$/, "");

const commands = {
    open: () => byId("choose").click(),
    async save() {
        download(current.name, await call("save"));
        await update(await call("saved"));
        say(`${current.name} was handed to the browser`);
    },
    undo: () => edit("undo"),
    redo: () => edit("redo"),
    add: () => edit("add", current.row),
    remove: () => edit("remove", current.row),
    up: () => edit("move", current.row, -1),
    down: () => edit("move", current.row, 1),
    async convert() {
        const version = await chooseVersion(current.versions, current.version, (wanted) => call("losses", wanted));
        if (version !== null) download(`${stem()}-version-${version}.zel`, await call("converted", version));
    },
    async compare() {
        const other = await chooseFile(`Compare ${current.name}`, files.filter((file) => file !== current));
        if (other === null) return;
        await tell("What differs", await call("differences", { document: other }), "The files say the same.");
    },
    async json() {
        download(`${stem()}.json`, await call("json"), "application/json");
    },
    async csv() {
        download(`${stem()}.csv`, await call("csv", current.name), "text/csv");
    },
    async print() {
        await drawSheet();
        window.print();
    },
    close,
    async header() {
        await select(kHeader);
        await drawTree(kHeader);
    },
};
for (const [id, run] of Object.entries(commands))
    byId(id).addEventListener("click", () => Promise.resolve(run()).catch((error) => say(error.message)));

const keys = { o: "open", s: "save", z: "undo", y: "redo", p: "print" };
document.addEventListener("keydown", (event) => {
    if (!(event.ctrlKey || event.metaKey) || event.altKey) return;
    const command = event.shiftKey ? { z: "redo" }[event.key.toLowerCase()] : keys[event.key];
    if (!command || byId(command).disabled || byId("dialog").open) return;
    event.preventDefault();
    document.activeElement.blur();  // a value being edited is taken first
    byId(command).click();
});

byId("choose").addEventListener("change", async ({ target }) => {
    await open([...target.files]);
    target.value = "";
});
document.addEventListener("dragover", (event) => event.preventDefault());
document.addEventListener("drop", (event) => {
    event.preventDefault();
    open([...event.dataTransfer.files]);
});

byId("search").addEventListener("keydown", async (event) => {
    if (event.key !== "Enter" || !current) return;
    event.preventDefault();
    const found = await call("find", event.target.value, !event.shiftKey);
    byId("hits").textContent = found.total ? `${found.number} of ${found.total.toLocaleString("en")}` : "nothing found";
    if (!found.total) return;
    await select(found.row, false);
    await drawTree(found.row);
    await mark(found);
});

window.addEventListener("beforeunload", (event) => {
    if (!files.some((file) => file.isChanged)) return;
    event.preventDefault();
    event.returnValue = "";  // what older browsers ask for
});
document.documentElement.dataset.ready = "true";
