// What it takes to see the first rows of 100 000 definitions in the page, beside a plain page that reads the same
// definitions as JSON and makes an element of every value: time, and the memory of the browser's renderer.
// Environment: as for the page's tests. Argument: a folder for the files.
import { execFileSync } from "node:child_process";
import { readFileSync, readdirSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";

const { chromium } = createRequire(`${process.env.ZEL_MODULES}/`)("playwright-core");
const folder = process.argv[2];
const kCount = 100000;
const kRuns = 3;

const json = join(folder, "page.json"), file = join(folder, "page.zel"), plain = join(folder, "plain.html");
writeFileSync(json, JSON.stringify({ Definitions: Array.from({ length: kCount }, (_, i) => ({ AreaCode: `A${i}`, AreaName: `Area ${i}` })) }));
execFileSync(process.env.ZEL_TOOL, ["build", json, file]);
writeFileSync(json, execFileSync(process.env.ZEL_TOOL, ["show", "--json", file], { maxBuffer: 1 << 29 }));
writeFileSync(plain, `<!doctype html><input type=file id=choose><table></table><script>
choose.onchange = async () => {
    const rows = JSON.parse(await choose.files[0].text()).Definitions.map((d) => "<tr>" + Object.values(d).map((v) => "<td>" + v).join(""));
    document.querySelector("table").innerHTML = rows.join("");
};</script>`);

// The renderer's resident memory in MiB.
function rendererMemory() {
    let most = 0;
    for (const id of readdirSync("/proc").filter((name) => /^\d+$/.test(name))) {
        try {
            if (!readFileSync(`/proc/${id}/cmdline`, "utf8").includes("--type=renderer")) continue;
            most = Math.max(most, Number(/VmRSS:\s+(\d+)/.exec(readFileSync(`/proc/${id}/status`, "utf8"))[1]) / 1024);
        } catch {
            // It ended meanwhile.
        }
    }
    return most;
}

async function measure(url, input, firstRow) {
    const browser = await chromium.launch({ executablePath: process.env.ZEL_CHROMIUM, args: ["--no-sandbox", "--disable-gpu"] });
    const page = await browser.newPage();
    await page.goto(`file://${url}`);
    await page.waitForSelector("#choose", { state: "attached" });
    const began = performance.now();
    await page.setInputFiles("#choose", input);
    await page.waitForSelector(firstRow, { timeout: 120000 });
    const time = performance.now() - began;
    const memory = rendererMemory();
    await browser.close();
    return { time, memory };
}

const middle = (values) => values.sort((a, b) => a - b)[values.length >> 1];
const ours = [];
for (let run = 0; run < kRuns; ++run) ours.push(await measure(process.env.ZEL_PAGE, file, "#tree .rows [role=row]"));
const theirs = [await measure(plain, json, "td")];  // once: it takes a minute
for (const [what, unit] of [["time", "ms"], ["memory", "MiB"]]) {
    const [page, other] = [ours, theirs].map((runs) => middle(runs.map((run) => run[what])));
    console.log(`page/open/${kCount} ${what}: ${page.toFixed(0)} ${unit}, ${(page / other).toFixed(2)} x the same as JSON in a plain page`);
}
