// The page in a browser as its tests see it: opened from disk, no network, the program beside it as the judge.
import { execFileSync, spawnSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";

const require = createRequire(`${process.env.ZEL_MODULES}/`);
const { chromium } = require("playwright-core");

export const axeSource = readFileSync(require.resolve("axe-core/axe.min.js"), "utf8");
const folder = mkdtempSync(join(tmpdir(), "page-"));
process.on("exit", () => rmSync(folder, { recursive: true, force: true }));

export const path = (name) => join(folder, name);
export const put = (name, content) => {
    writeFileSync(path(name), content);
    return path(name);
};
// What the program prints; it must succeed, or end with one of `statuses`.
export function tool(...parameters) {
    const { status, stdout, stderr } = spawnSync(process.env.ZEL_TOOL, parameters, { maxBuffer: 1 << 28 });
    if (status > 1) throw new Error(`zelsketch ${parameters.join(" ")}: ${stderr}`);
    return stdout;
}
export const pdfText = (pdf) => execFileSync("pdftotext", ["-layout", pdf, "-"], { encoding: "utf8" });

let browser;
export async function launch() {
    browser = await chromium.launch({
        executablePath: process.env.ZEL_CHROMIUM,
        args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
            "--disable-component-update", "--disable-sync"],
    });
}
export const quit = () => browser.close();

// A page with the files open. `requests` and `errors` collect what must stay empty.
export async function open(names = [], options = {}) {
    const page = await browser.newPage({ viewport: { width: 1400, height: 850 }, ...options });
    page.setDefaultTimeout(20000);
    page.errors = [];
    page.requests = [];
    page.on("pageerror", (error) => page.errors.push(error.message));
    page.on("console", (message) => message.type() === "error" && page.errors.push(message.text()));
    page.on("request", (request) => /^(file|blob|data):/.test(request.url()) || page.requests.push(request.url()));
    await page.goto(`file://${process.env.ZEL_PAGE}`);
    await page.waitForSelector("[data-ready]");
    if (names.length) {
        await page.setInputFiles("#choose", names.map(path));
        await said(page, `${names[names.length - 1]} is open`);
    }
    return page;
}
export const said = (page, text) =>
    page.waitForFunction((wanted) => document.getElementById("status").textContent.includes(wanted), text);
// Runs what hands a file to the browser, and gives the file's bytes.
export async function downloaded(page, trigger) {
    const [download] = await Promise.all([page.waitForEvent("download"), trigger()]);
    return readFileSync(await download.path());
}
export const codes = (page) => page.locator("#tree .rows .code").allTextContents();
