// What fits into a parameter. What does not is told beside its field, and not sent.

import type { Parameter } from "../shapes.js";
import { counted } from "../words.js";

const encoder = new TextEncoder();

export function bytesIn(text: string): number {
  return encoder.encode(text).length;
}

function numberProblem(parameter: Parameter, typed: string): string {
  const isWhole = parameter.type === "int";
  const form = isWhole ? /^\s*[+-]?\d+\s*$/ : /^\s*[+-]?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?\s*$/i;
  if (!form.test(typed)) return isWhole ? "This is no whole number." : "This is no number.";
  const { minimum = -Infinity, maximum = Infinity } = parameter;
  const value = Number(typed);
  return value < minimum || value > maximum ? `Between ${minimum} and ${maximum}.` : "";
}

function textProblem(parameter: Parameter, typed: string): string {
  const bytes = bytesIn(typed);
  const most = parameter.maximumBytes ?? Infinity;
  return bytes > most ? `${counted(bytes, "byte")}; at most ${most} fit.` : "";
}

export const isNumber = ({ type }: Parameter): boolean => type === "int" || type === "float";

/** Why this cannot be sent; empty where it can. */
export function problemWith(parameter: Parameter, typed: string): string {
  return isNumber(parameter) ? numberProblem(parameter, typed) : textProblem(parameter, typed);
}

/** How many bytes are left, where it gets near; empty where there is room. */
export function roomLeft(parameter: Parameter, typed: string): string {
  if (parameter.maximumBytes === undefined) return "";
  const left = parameter.maximumBytes - bytesIn(typed);
  const isNear = left >= 0 && left <= Math.max(16, parameter.maximumBytes / 10);
  return isNear ? `${counted(left, "byte")} left` : "";
}
