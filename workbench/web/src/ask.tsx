// Asks whether something is really meant, in the place where it was pressed.

import { useLayoutEffect, useRef } from "preact/hooks";

interface Props {
  question: string;
  yes: string;
  isOff: boolean;
  onAnswer: (isMeant: boolean) => void;
}

export function Ask({ question, yes, isOff, onAnswer }: Props) {
  const no = useRef<HTMLButtonElement>(null);
  useLayoutEffect(() => no.current?.focus(), []);
  return (
    <span class="asks" role="group" aria-label={question}>
      <span>{question}</span>
      <button class="small" disabled={isOff} onClick={() => onAnswer(true)}>
        {yes}
      </button>
      <button class="small" ref={no} onClick={() => onAnswer(false)}>
        Cancel
      </button>
    </span>
  );
}
