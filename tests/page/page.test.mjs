import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { after, before, test } from "node:test";
import { axeSource, codes, downloaded, launch, open, path, pdfText, put, quit, said, tool } from "./Browser.mjs";

const kSample = {
    Header: { CreatedBy: "M. Ortiz", FileVersion: 5, CreationDate: 147000, ModifiedDate: 147100, ModifiedTime: 40000,
        CreatedByVersion: "5.2.1", Type: 5 },
    DefinitionType: 1,
    FileFlags: 3,
    Definitions: [
        { AreaCode: "GLA1", Multiplier: 1, AreaName: "First floor", AreaDescription: "Living area", LineColor: 4, Members: [
            { AreaCode: "GAR", Multiplier: -1, AreaName: "Garage cut" }, { AreaCode: "P/P", Multiplier: 0.1, AreaName: "Porch €" }] },
        { AreaCode: "GLA2", Multiplier: 1e23, AreaName: "Second floor", Hidden: 1 },
        { AreaCode: "BSMT", Multiplier: 5e-324, AreaName: "Basement", SubtractAreaCode: "GAR" },
        { AreaCode: "LAND", Multiplier: 123456789, AreaName: "Lot" },
    ],
};

before(async () => {
    await launch();
    put("sample.json", JSON.stringify(kSample));
    tool("build", path("sample.json"), path("sample.zel"));
});
after(quit);

// What every page must leave behind: no error and no request to anywhere.
async function leave(page) {
    assert.deepEqual(page.errors, []);
    assert.deepEqual(page.requests, []);
    await page.close();
}

test("ShowsDefinitionsFieldsAndTheirBytes", async () => {
    const page = await open(["sample.zel"]);
    assert.deepEqual((await codes(page)).map((code) => code.replace("▾", "")), ["GLA1", "GAR", "P/P", "GLA2", "BSMT", "LAND"]);
    await page.click("#tree .rows [role=row]:nth-child(3)");
    await page.waitForFunction(() => document.querySelector("#details h2").textContent === "Definitions[0].Members[1]");
    assert.equal(await page.inputValue("#field-AreaName"), "Porch €");
    await page.hover("#field-Multiplier");
    const bytes = readFileSync(path("sample.zel"));
    const at = bytes.indexOf(Buffer.from("P/P")) + 3;
    await page.waitForSelector(`#bytes .marked[data-offset="${at}"]`);
    assert.equal((await page.locator("#bytes .marked").allTextContents()).join(""), bytes.subarray(at, at + 8).toString("hex"));
    await page.click(`#bytes [data-offset="${bytes.indexOf(Buffer.from("Basement"))}"]`);
    await page.waitForFunction(() => document.querySelector("#details h2").textContent === "Definitions[2]");
    assert.equal(await page.locator(".field.marked label").textContent(), "AreaName");
    await leave(page);
});

const kPlaces = ["Definitions[0]", "Definitions[0].Members[0]", "Definitions[0].Members[1]", "Definitions[1]",
    "Definitions[2]", "Definitions[3]"];
const focusRow = async (page, steps) => {
    await page.focus("#tree");
    await page.keyboard.press("Home");
    for (let i = 0; i < steps; ++i) await page.keyboard.press("ArrowDown");
    await page.waitForFunction((place) => document.querySelector("#details h2").textContent === place, kPlaces[steps]);
};
const saved = (page) => downloaded(page, () => page.click("#save"));

// Each change by hand and by the program: the saved bytes are the same; undone, they are those of before.
const kChanges = [
    { name: "Name", args: ["set", "Definitions[0].Members[1].AreaName=Balcony"], act: (page) => type(page, 2, "AreaName", "Balcony") },
    { name: "Code", args: ["set", "Definitions[2].AreaCode=BSMT-2"], act: (page) => type(page, 4, "AreaCode", "BSMT-2") },
    { name: "Number", args: ["set", "Definitions[1].Multiplier=0.25"], act: (page) => type(page, 3, "Multiplier", "0.25") },
    { name: "Header", args: ["set", "Header.LastModifiedBy=Zoë"], act: async (page) => {
        await page.click("#header");
        await page.waitForSelector("#field-LastModifiedBy");
        await page.fill("#field-LastModifiedBy", "Zoë");
        await page.keyboard.press("Enter");
    } },
    { name: "Remove", args: ["remove", "Definitions[0].Members[0]"], act: async (page) => {
        await focusRow(page, 1);
        await page.keyboard.press("Delete");
    } },
    { name: "Move", args: ["move", "Definitions[3]", "Definitions[2]"], act: async (page) => {
        await focusRow(page, 5);
        await page.keyboard.press("Alt+ArrowUp");
    } },
    { name: "Add", args: ["add", "Definitions[2]"], act: async (page) => {
        await focusRow(page, 3);
        await page.keyboard.press("Insert");
    } },
];
async function type(page, row, field, text) {
    await focusRow(page, row);
    await page.waitForSelector(`#field-${field}`);
    await page.fill(`#field-${field}`, text);
    await page.keyboard.press("Enter");
}

for (const { name, args, act } of kChanges) {
    test(`Changes${name}AsTheProgramDoes`, async () => {
        const before = readFileSync(path("sample.zel"));
        const [command, ...places] = args;
        put(`${name}.zel`, before);
        tool(command, path(`${name}.zel`), ...places);
        const expected = readFileSync(path(`${name}.zel`));
        assert.notDeepEqual(expected, before);
        const page = await open(["sample.zel"]);
        await act(page);
        await page.waitForFunction(() => document.title.startsWith("* "));
        assert.deepEqual(await saved(page), expected);
        await page.click("#undo");
        await said(page, "Undone");
        assert.deepEqual(await saved(page), before);
        await page.click("#redo");
        await said(page, "Done again");
        assert.deepEqual(await saved(page), expected);
        await leave(page);
    });
}

test("RefusesWhatDoesNotFitAndSaysWhatWould", async () => {
    const page = await open(["sample.zel"]);
    for (const [field, value, why] of [["AreaName", "a name of 20 letters", "19"], ["CalcType", "256", "255"], ["LineColor", "-1", "0"],
        ["AreaDescription", "日本", "character"], ["Multiplier", "two", "number"]]) {
        await page.fill(`#field-${field}`, value);
        await page.keyboard.press("Enter");
        await page.waitForSelector(`#field-${field}[aria-invalid="true"]`);
        assert.match(await page.locator(".field .fault:not(:empty)").first().textContent(), new RegExp(why));
        await page.focus(`#field-${field}`);
        await page.keyboard.press("Escape");
    }
    assert.deepEqual(await saved(page), readFileSync(path("sample.zel")));
    await leave(page);
});

test("LeadsToWhatIsWrong", async () => {
    const bytes = readFileSync(path("sample.zel"));
    bytes[bytes.indexOf(Buffer.from("Basement")) - 1] = 25;
    put("damaged.zel", bytes);
    put("foreign.zel", Buffer.from("a letter to the editor"));
    put("empty.zel", "");
    const page = await open(["damaged.zel"]);
    assert.match(await page.textContent("#verdict"), /1 /);
    await page.click("#finding-list button");
    await page.waitForFunction(() => document.activeElement.id === "field-AreaName");
    assert.equal(await page.textContent("#details h2"), "Definitions[2]");
    await type(page, 5, "AreaName", "Plot");  // what is damaged elsewhere is in no one's way
    await page.waitForSelector('#row-5 [title="Plot"]');
    await type(page, 4, "AreaName", "Cellar");
    await page.waitForFunction(() => document.getElementById("verdict").textContent.startsWith("Nothing is wrong"));
    for (const name of ["foreign.zel", "empty.zel"]) {
        await page.setInputFiles("#choose", path(name));
        await said(page, `${name} is open`);
        assert.match(await page.textContent("#findings"), /Signature|cut short/);
    }
    await leave(page);
});

test("AgreesWithTheProgramOnEveryOtherForm", async () => {
    put("other.zel", readFileSync(path("sample.zel")));
    tool("set", path("other.zel"), "Definitions[1].AreaName=Upper floor");
    const page = await open(["sample.zel", "other.zel"]);
    assert.equal((await downloaded(page, () => page.click("#json"))).toString(), tool("show", "--json", path("other.zel")).toString());
    // The column of the file's name is the page's own.
    const table = (csv) => csv.toString().replaceAll(path("other.zel"), "other.zel");
    assert.equal(table(await downloaded(page, () => page.click("#csv"))), table(tool("list", "--csv", path("other.zel"))));
    await page.click("#compare");
    await page.click("#dialog button[value=yes]");
    await page.waitForSelector("#dialog li");
    const lines = tool("diff", path("other.zel"), path("sample.zel")).toString().trim().split("\n");
    assert.deepEqual(await page.locator("#dialog li").allTextContents(), lines);
    await page.keyboard.press("Escape");
    await page.click("#convert");
    await page.selectOption("#version", "2");
    await page.waitForFunction(() => document.querySelector("#dialog .outcome").textContent.includes("SubtractAreaCode"));
    const converted = await downloaded(page, () => page.click("#dialog button[value=yes]"));
    tool("convert", "--to-version", "2", path("other.zel"), path("other2.zel"));
    assert.deepEqual(converted, readFileSync(path("other2.zel")));
    await leave(page);
});

test("PrintsHeaderAndAllAreas", async () => {
    const page = await open(["sample.zel"]);
    await page.click("#tree .rows .toggle");  // what is folded is printed all the same
    await page.pdf({ path: path("sheet.pdf") });
    const text = pdfText(path("sheet.pdf"));
    for (const part of ["sample.zel", "M. Ortiz", "2002-06-22", "6 area definitions", "GLA1", "First floor", "Garage cut", "Porch €", "LAND"])
        assert.ok(text.includes(part), `${part} in:\n${text}`);
    await leave(page);
});

test("WorksByKeyboardAlone", async () => {
    const page = await open(["sample.zel"]);
    const focused = () => page.evaluate(() => document.activeElement.id);
    assert.equal(await focused(), "tree");
    await page.keyboard.press("ArrowLeft");
    await page.waitForFunction(() => document.querySelectorAll("#tree .rows [role=row]").length === 4);
    await page.keyboard.press("ArrowRight");
    await page.waitForFunction(() => document.querySelectorAll("#tree .rows [role=row]").length === 6);
    await page.keyboard.press("Enter");
    assert.equal(await focused(), "field-AreaCode");
    await page.focus("#open");
    const reached = new Set();
    for (let i = 0; i < 60; ++i) {
        reached.add(await focused());
        await page.keyboard.press("Tab");
    }
    for (const id of ["save", "tree", "search", "field-AreaCode", "field-SubtractAreaCode", "bytes"]) assert.ok(reached.has(id), id);
    await page.focus("#bytes");
    await page.keyboard.press("Home");
    await page.waitForFunction(() => document.getElementById("where").textContent.startsWith("Header.Signature"));
    await page.focus("#search");
    await page.keyboard.type("porch");
    await page.keyboard.press("Enter");
    await page.waitForFunction(() => document.getElementById("hits").textContent === "1 of 1");
    await page.waitForFunction(() => document.querySelector("#details h2").textContent === "Definitions[0].Members[1]");
    await leave(page);
});

test("AsksBeforeAnUnsavedChangeIsLost", async () => {
    const page = await open(["sample.zel"]);
    await type(page, 0, "AreaName", "Changed");
    await page.waitForFunction(() => document.title.startsWith("* "));
    const asking = page.waitForEvent("dialog");
    const leaving = page.evaluate(() => {
        location.href = "about:blank";
    });
    const dialog = await asking;
    assert.equal(dialog.type(), "beforeunload");
    await dialog.dismiss();
    await leaving;
    await page.click("#close");
    await page.click("#dialog button[value='']");
    assert.equal(await page.inputValue("#field-AreaName"), "Changed");
    await page.close();
});

for (const options of [{ colorScheme: "light" }, { colorScheme: "dark" }, { viewport: { width: 420, height: 800 } }]) {
    test(`IsAccessible ${JSON.stringify(options)}`, async () => {
        put("faulty.zel", readFileSync(path("sample.zel")).subarray(0, 500));
        const page = await open(["faulty.zel", "sample.zel"], { ...options, bypassCSP: true });
        await page.evaluate(axeSource);
        const check = async (when) => {
            const { violations, passes } = await page.evaluate(() => window.axe.run());
            assert.ok(passes.length > 10, "nothing was looked at");
            assert.deepEqual(violations.map(({ id, nodes }) => `${when}: ${id}: ${nodes[0].html}`), []);
        };
        await check("file");
        await page.click("#convert");
        await check("dialog");
        await leave(page);
    });
}

test("MakesRowsOnlyWhereTheyAreSeen", async () => {
    const members = (depth) => Array.from({ length: depth }).reduce((below, _, i) => [{ AreaCode: `L${depth - i}`, Members: below }], []);
    put("deep.json", JSON.stringify({ Definitions: members(900) }));
    put("wide.json", JSON.stringify({ Definitions: Array.from({ length: 20000 }, (_, i) => ({ AreaCode: `W${i}` })) }));
    for (const [name, last] of [["deep", "L900"], ["wide", "W19999"]]) {
        tool("build", path(`${name}.json`), path(`${name}.zel`));
        const page = await open([`${name}.zel`]);
        await page.focus("#tree");
        await page.keyboard.press("End");
        await page.waitForFunction((code) => document.querySelector('#tree [aria-selected="true"] .code')?.textContent.endsWith(code), last);
        assert.ok(await page.locator("#tree .rows > *").count() < 100);
        assert.ok(await page.locator("#bytes .rows > *").count() < 100);
        await leave(page);
    }
});
