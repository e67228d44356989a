// element("button", { class: "x", "aria-label": "y", onclick }, "text", child...): what does not start with "on" is an
// attribute; null, undefined and false leave it out.
export function element(tag, attributes = {}, ...children) {
    const made = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
        if (name.startsWith("on")) made.addEventListener(name.slice(2), value);
        else if (value !== null && value !== undefined && value !== false) made.setAttribute(name, value === true ? "" : value);
    }
    made.append(...children.filter((child) => child !== null && child !== undefined));
    return made;
}

export const byId = (id) => document.getElementById(id);

export const counted = (count, thing) => `${count.toLocaleString("en")} ${thing}${count === 1 ? "" : "s"}`;

export const hex = (value, digits) => value.toString(16).padStart(digits, "0");

// Hands bytes to the browser as a file.
export function download(name, bytes, type = "application/octet-stream") {
    const url = URL.createObjectURL(new Blob([bytes], { type }));
    const link = element("a", { href: url, download: name, hidden: true });
    document.body.append(link);
    link.click();
    link.remove();
    setTimeout(() => URL.revokeObjectURL(url), 60000);
}
