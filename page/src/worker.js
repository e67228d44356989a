/* global createCore */
// Runs in the worker, behind the compiled library: keeps its documents and answers Engine's calls.
const core = createCore();
const documents = new Map();
let nextId = 1;

// Answers of the library are JSON texts, or bytes, which are copied out of its memory.
function answer(value) {
    if (typeof value !== "string") return value.slice();
    const parsed = JSON.parse(value);
    if (parsed && parsed.failure !== undefined) throw new Error(parsed.failure);
    return parsed;
}

const calls = {
    open(library, bytes) {
        const made = new library.Document(bytes);
        const id = nextId++;
        documents.set(id, made);
        return { ...answer(made.summary()), id };
    },
    call(library, id, name, ...parameters) {
        return answer(documents.get(id)[name](...parameters.map((p) => (p && p.document ? documents.get(p.document) : p))));
    },
    close(library, id) {
        documents.get(id).delete();
        documents.delete(id);
        return null;
    },
};

self.onmessage = async ({ data: { ticket, what, parameters } }) => {
    try {
        const library = await core;
        self.postMessage({ ticket, result: calls[what](library, ...parameters) });
    } catch (error) {
        self.postMessage({ ticket, error: reason(error) });
    }
};

// What the library throws itself is a number; only exhausted memory gets that far.
function reason(error) {
    return typeof error === "number" ? "there is not enough memory for this file" : error.message;
}
