// A long list of rows of the same height, of which only those that can be seen are in the document.

import type { ComponentChildren, RefObject } from "preact";
import { useLayoutEffect, useState } from "preact/hooks";

const mostRows = 60;
const spare = 6; // rows above and below those that can be seen

interface Window {
  first: number;
  last: number; // behind the last one
}

/** The rows that are in the document, kept current as the box is scrolled or gets another size. */
export function useWindow(box: RefObject<HTMLElement>, count: number, rowHeight: number): Window {
  const [seen, setSeen] = useState({ top: 0, height: 600 });
  useLayoutEffect(() => {
    const element = box.current;
    if (element === null) return;
    const look = (): void => setSeen({ top: element.scrollTop, height: element.clientHeight });
    const watcher = new ResizeObserver(look);
    watcher.observe(element);
    element.addEventListener("scroll", look);
    return () => {
      watcher.disconnect();
      element.removeEventListener("scroll", look);
    };
  }, [box]);
  const first = Math.max(0, Math.min(Math.floor(seen.top / rowHeight) - spare, count - 1));
  const wanted = Math.ceil(seen.height / rowHeight) + 2 * spare;
  return { first, last: Math.min(count, first + Math.min(mostRows, wanted)) };
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
