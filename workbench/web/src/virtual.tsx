// A long list of rows of the same height, of which only those that can be seen are in the document.

import type { ComponentChildren, RefObject } from "preact";
import { useLayoutEffect, useState } from "preact/hooks";

const mostRows = 60;
const spare = 6; // rows above and below those that can be seen

/** What part of a box can be seen, in pixels. */
export interface Sight {
  top: number;
  left: number;
  height: number;
  width: number;
}

/** Rows or columns that are in the document. */
export interface Window {
  first: number;
  last: number; // behind the last one
}

/** Kept current as the box is scrolled or gets another size. */
export function useSight(box: RefObject<HTMLElement>): Sight {
  const [sight, setSight] = useState<Sight>({ top: 0, left: 0, height: 600, width: 1200 });
  useLayoutEffect(() => {
    const element = box.current;
    if (element === null) return;
    const look = (): void => {
      const { scrollTop: top, scrollLeft: left, clientHeight: height, clientWidth: width } = element;
      setSight({ top, left, height, width });
    };
    const watcher = new ResizeObserver(look);
    watcher.observe(element);
    element.addEventListener("scroll", look);
    return () => {
      watcher.disconnect();
      element.removeEventListener("scroll", look);
    };
  }, [box]);
  return sight;
}

export function rowsIn(sight: Sight, count: number, rowHeight: number): Window {
  const first = Math.max(0, Math.min(Math.floor(sight.top / rowHeight) - spare, count - 1));
  const wanted = Math.ceil(sight.height / rowHeight) + 2 * spare;
  return { first, last: Math.min(count, first + Math.min(mostRows, wanted)) };
}

/** The rows that are in the document. */
export function useWindow(box: RefObject<HTMLElement>, count: number, rowHeight: number): Window {
  return rowsIn(useSight(box), count, rowHeight);
}

/** How far to scroll so that a row can be seen: by a row at its edge, to the middle from afar. */
export function scrollFor(top: number, rowHeight: number, scrolled: number, height: number): number {
  const above = scrolled - top;
  const below = top + rowHeight - scrolled - height;
  if (above <= 0 && below <= 0) return scrolled;
  if (Math.max(above, below) > rowHeight) return top - (height - rowHeight) / 2;
  return above > 0 ? top : top + rowHeight - height;
}

/** As high as all rows, with those in the window at their place. */
export function Rows(props: {
  window: Window;
  count: number;
  rowHeight: number;
  role: "presentation" | "rowgroup";
  children: ComponentChildren;
}) {
  const { window, count, rowHeight, role, children } = props;
  return (
    <div class="all" role="presentation" style={{ height: `${count * rowHeight}px` }}>
      <div
        class="window"
        role={role}
        style={{ transform: `translateY(${window.first * rowHeight}px)` }}
      >
        {children}
      </div>
    </div>
  );
}
