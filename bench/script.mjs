// node script.mjs ITEMS.json: the result script of a DataArray load of "items" into T.

import { readFileSync, writeSync } from "node:fs";

const PIECE = 1 << 20; // characters that are written at a time

/** Six significant digits and the exponent; a tie goes to the even digit, as printf's does. */
function sixDigits(value) {
    const evenTie = value.toExponential(30).match(/^(-?\d\.\d{4}[02468])50*e(.+)$/);
    return evenTie ? evenTie.slice(1) : value.toExponential(5).split("e");
}

/** What printf's %g writes for a number that has more digits than it keeps, or an exponent. */
function general(value) {
    const [digits, exponent] = sixDigits(value);
    if (exponent >= -4 && exponent < 6) return String(Number(`${digits}e${exponent}`));
    return `${Number(digits)}e${exponent[0]}${exponent.slice(1).padStart(2, "0")}`;
}

/** JavaScript's own text is the shortest one; up to six digits that is what is wanted. */
function number(value) {
    const text = Object.is(value, -0) ? "-0" : String(value);
    const isShort = text.length <= 6 || (text.length === 7 && text.includes("."));
    return isShort && !/e|^0\.0000/.test(text) ? text : general(value);
}

function value(scalar) {
    if (typeof scalar === "string") return `""${scalar}""`;
    if (typeof scalar === "number") return number(scalar);
    return scalar ? "1" : "0";
}

const isContainer = (node) => typeof node === "object" && node !== null;
const isFlat = (array) => !array.some(isContainer);

function elements(array) {
    let text = "";
    for (const element of array) {
        if (element !== null) text += value(element) + ",";
    }
    return text + ";";
}

/** A named member, or an element of a list, where an object has no name. */
function assignment(name, node, isElement) {
    if (node === null) return "";
    if (!isContainer(node)) return `${name}=${value(node)};`;
    if (Array.isArray(node)) {
        const head = `${name}[0-${node.length - 1}]=`;
        if (isFlat(node)) return head + elements(node);
        return `${head}{${node.map((element) => assignment("", element, true)).join("")}};`;
    }
    let text = isElement ? "{" : `${name}={`;
    for (const key in node) text += assignment(key, node[key], false);
    return text + (isElement ? "}," : "};");
}

function record(node) {
    return Array.isArray(node) && isFlat(node) ? elements(node) : `{${assignment("", node, true)}};`;
}

function write(text) {
    const bytes = Buffer.from(text);
    for (let done = 0; done < bytes.length; ) done += writeSync(1, bytes, done);
}

const { items } = JSON.parse(readFileSync(process.argv[2], "utf8"));
let script = "";
items.forEach((item, row) => {
    script += `T[${row}]=${record(item)}`;
    if (script.length > PIECE) {
        write(script);
        script = "";
    }
});
write(`${script}; READER_NUM_RECORDS=${items.length};`);
