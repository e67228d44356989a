import { counted, element } from "./dom.js";

const kHeaderFields = ["CreatedBy", "CreatedByVersion", "CreationDate", "CreationTime", "LastModifiedBy",
    "ModifiedByVersion", "ModifiedDate", "ModifiedTime", "ProgramVersionSignature", "FileVersion", "Type", "TarnVersion"];
const kColumns = [["code", "Code"], ["name", "Name"], ["description", "Description"], ["multiplier", "Multiplier"],
    ["subtract", "Subtracts"], ["members", "Members"]];
const kDeepestIndent = 12;

// The printed sheet of one file: what its header says and the table of its areas, all levels, whatever is folded on
// the screen. `header` and `rows` are what the library says of them.
export function fillSheet(sheet, name, header, rows) {
    const facts = header.filter((field) => kHeaderFields.includes(field.name) && field.present);
    sheet.replaceChildren(
        element("h1", {}, name),
        element("dl", {}, ...facts.flatMap((field) => [element("dt", {}, field.name), element("dd", {}, isPlain(field) ? field.value : field.note)])),
        element("h2", {}, counted(rows.length, "area definition")),
        element("table", {},
            element("thead", {}, element("tr", {}, ...kColumns.map(([, title]) => element("th", { scope: "col" }, title)))),
            element("tbody", {}, ...rows.map((row) => areaRow(row)))),
    );
}

// A date or a time is printed as such, anything else as it stands.
const isPlain = (field) => !/(Date|Time)$/.test(field.name);

function areaRow(row) {
    const cells = kColumns.map(([key]) => {
        const cell = element("td", { class: key }, String(row[key] || (key === "multiplier" ? row[key] : "")));
        if (key === "code") cell.style.paddingInlineStart = `${Math.min(row.level - 1, kDeepestIndent) * 1.2}em`;
        return cell;
    });
    return element("tr", {}, ...cells);
}
