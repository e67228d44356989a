// assemble.mjs TEMPLATE STYLE WORKER SCRIPT OUT: puts the page's parts into one file. Its content policy names the
// script and the style by their hashes and allows no request to anywhere.
import { createHash } from "node:crypto";
import { readFileSync, writeFileSync } from "node:fs";

const kLargest = 1.5 * 1024 * 1024;
const [template, style, worker, script] = process.argv.slice(2, 6).map((path) => readFileSync(path, "utf8"));
const hash = (text) => `'sha256-${createHash("sha256").update(text).digest("base64")}'`;
// Within a script element only its end tag and the opening of a comment are special.
const inScript = (text) => text.replace(/<(\/script|!--)/gi, "\\x3c$1");

const parts = { STYLE: style, WORKER: inScript(worker), SCRIPT: inScript(script) };
parts.POLICY = [
    "default-src 'none'", `script-src ${hash(parts.SCRIPT)} 'wasm-unsafe-eval'`, "worker-src blob:",
    `style-src ${hash(parts.STYLE)}`, "base-uri 'none'", "form-action 'none'",
].join("; ");
const page = template.replace(/@(POLICY|STYLE|WORKER|SCRIPT)@/g, (_, part) => parts[part]);
const size = Buffer.byteLength(page);
if (size > kLargest) throw new Error(`the page has ${size} bytes, at most ${kLargest} are allowed`);
writeFileSync(process.argv[6], page);
console.log(`size: page/zelsketch.html ${size} bytes`);
