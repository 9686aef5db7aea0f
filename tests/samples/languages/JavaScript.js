import { read } from "./file.js";

/* Waits for all
   of them. */
export async function load(names, limit = 10) {
    const found = new Map();
    for (const name of names) {
        if (found.size >= limit) break; // enough
        const text = await read(name + '.txt');
        found.set(name, text?.length ?? 0x10);
    }
    return typeof found === 'object' ? found : undefined;
}
class Box {
    get size() { return 1; }
    set size(to) { using file = open(to); }
}
let glob = `${folder}/*.js`; // the star begins a comment
which ends here */ const address = `https://example.com`; // and this one to the end of its line
