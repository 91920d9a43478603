// A button that must be held for a second while the scene is locked, by the pointer or by a key. A
// mere click says so. What was shown when it was pressed counts, not what is when the hold ends. It
// submits nothing: Enter in a field of the same form must not press it.

import { useEffect, useId, useRef, useState } from "preact/hooks";
import { isLocked } from "./scene.js";

const needed = 1000; // milliseconds
const told = 4000;

interface Props {
  id?: string;
  label: string;
  isOff: boolean;
  style?: string;
  onPress: (held: boolean) => void;
}

type Phase = "idle" | "held" | "done" | "explained";

interface Hold {
  phase: Phase;
  begin: () => void;
  end: () => void;
  explain: () => void;
}

/** What happens while it is held, and when it is let go too early. */
function useHold(onPress: (held: boolean) => void): Hold {
  const [phase, setPhase] = useState<Phase>("idle");
  const timer = useRef<ReturnType<typeof setTimeout>>();
  const after = (pause: number, act: () => void): void => {
    clearTimeout(timer.current);
    timer.current = setTimeout(act, pause);
  };
  useEffect(() => () => clearTimeout(timer.current), []);
  const begin = (): void => {
    setPhase("held");
    after(needed, () => {
      setPhase("done");
      onPress(true);
    });
  };
  const explain = (): void => {
    setPhase("explained");
    after(told, () => setPhase("idle"));
  };
  const end = (): void => {
    if (phase === "held") explain();
    if (phase === "done") after(0, () => setPhase("idle")); // the click of the same press comes first
  };
  return { phase, begin, end, explain };
}

const isPress = ({ key }: KeyboardEvent): boolean => key === " " || key === "Enter";

function Held({ id, label, isOff, style = "", onPress }: Props) {
  const { phase, begin, end, explain } = useHold(onPress);
  const hint = useId();
  const onPointerDown = (event: PointerEvent): void => {
    if (event.button !== 0) return;
    const { currentTarget, pointerId } = event as PointerEvent & { currentTarget: HTMLElement };
    if (currentTarget.hasPointerCapture(pointerId)) currentTarget.releasePointerCapture(pointerId); // a finger slides off
    begin();
  };
  const onKeyDown = (event: KeyboardEvent): void => {
    if (!isPress(event)) return;
    event.preventDefault();
    if (!event.repeat) begin();
  };
  return (
    <span class="hold">
      <button
        type="button"
        id={id}
        class={`${style} holds ${phase}`}
        disabled={isOff}
        aria-describedby={hint}
        onPointerDown={onPointerDown}
        onPointerUp={end}
        onPointerLeave={end}
        onKeyDown={onKeyDown}
        onKeyUp={(event) => isPress(event) && end()}
        onBlur={end}
        onClick={() => phase !== "done" && explain()}
      >
        {label}
      </button>
      <span class={phase === "explained" ? "told" : "unseen"} role="status">
        {phase === "explained" ? "The scene is locked: hold the button for a second." : ""}
      </span>
      <span id={hint} hidden>
        Needs to be held for a second while the scene is locked.
      </span>
    </span>
  );
}

export function HoldButton(props: Props) {
  const { id, label, isOff, style = "", onPress } = props;
  if (isLocked.value) return <Held {...props} />;
  return (
    <button type="button" id={id} class={style} disabled={isOff} onClick={() => onPress(false)}>
      {label}
    </button>
  );
}
