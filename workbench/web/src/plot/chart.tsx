// Draws numbers, in the colours of the page.

import { useEffect, useRef } from "preact/hooks";
import uPlot from "uplot";
import { theme } from "../theme.js";
import type { Plotted } from "./plotted.js";

const colour = (name: string): string =>
  getComputedStyle(document.documentElement).getPropertyValue(name).trim();

function axis(more: uPlot.Axis): uPlot.Axis {
  const line = { stroke: colour("--line"), width: 1 };
  return { stroke: colour("--quiet"), font: "13px system-ui, sans-serif", grid: line, ticks: line, ...more };
}

const wholeNumbers = (_: uPlot, values: number[]): string[] =>
  values.map((value) => (Number.isInteger(value) ? String(value) : ""));

const timeTexts = (_: uPlot, values: number[]): string[] =>
  values.map((value) => new Date(value * 1000).toLocaleTimeString("en-GB"));

/** Few points are marked, since a line alone would hide where they are. */
function line({ choice, values }: Plotted): uPlot.Series {
  const stroke = colour("--busy");
  const isFew = values.length <= 120;
  return { label: choice.title, stroke, width: 2, points: { show: isFew, size: 6, fill: stroke } };
}

function optionsFor(shown: Plotted, box: HTMLElement): uPlot.Options {
  return {
    width: box.clientWidth,
    height: box.clientHeight,
    padding: [14, 18, 0, 0],
    legend: { show: false },
    cursor: { drag: { x: false, y: false } },
    scales: { x: { time: shown.isByTime } },
    axes: [
      axis({ values: shown.isByTime ? timeTexts : wholeNumbers, space: shown.isByTime ? 90 : 50 }),
      axis({ size: 64 }),
    ],
    series: [{}, line(shown)],
  };
}

function draw(box: HTMLElement, shown: Plotted): () => void {
  const plot = new uPlot(optionsFor(shown, box), [shown.at, shown.values], box);
  const watcher = new ResizeObserver(() => plot.setSize({ width: box.clientWidth, height: box.clientHeight }));
  watcher.observe(box);
  return () => {
    watcher.disconnect();
    plot.destroy();
  };
}

function words({ choice, values }: Plotted): string {
  const numbers = values.filter((value) => value !== null);
  if (numbers.length === 0) return `${choice.title}: no numbers`;
  const least = numbers.reduce((one, other) => Math.min(one, other));
  const most = numbers.reduce((one, other) => Math.max(one, other));
  return `${choice.title}: ${numbers.length} numbers between ${least} and ${most}`;
}

export function Chart({ shown }: { shown: Plotted }) {
  const box = useRef<HTMLDivElement>(null);
  const colours = theme.value;
  useEffect(() => (box.current === null ? undefined : draw(box.current, shown)), [shown, colours]);
  return <div class="chart" role="img" aria-label={words(shown)} ref={box} />;
}
