// What can be done with the column that was chosen in a sheet.

import { details } from "../edit/settings.js";
import { brokenAt } from "../session.js";
import type { Outline, Values } from "../shapes.js";
import { keyOfColumn, readColumns, settingsForColumns, settingsForKeyColumn, written } from "./columns.js";
import type { Table } from "./table.js";
import { use } from "./use.js";

interface Props {
  instance: string;
  shown: Table;
  name: string;
  outline: Outline;
}

interface Offered {
  title: string;
  set: Values;
}

function offersFor({ shown, name, outline }: Props, values: Values): Offered[] {
  const others = readColumns(values).filter((each) => each !== written(shown, name));
  const only = [written(shown, name)];
  const asKey = { title: "As key", set: settingsForKeyColumn(shown, name, outline, values) };
  const offers = [
    ...(keyOfColumn(shown, name) === "" ? [] : [asKey]),
    { title: "Only this field", set: settingsForColumns(shown, only, outline, values) },
  ];
  if (others.length === 0) return offers;
  return [
    ...offers,
    { title: "This field, too", set: settingsForColumns(shown, [...others, ...only], outline, values) },
    { title: "All fields", set: settingsForColumns(shown, [], outline, values) },
  ];
}

export function ColumnOffer(props: Props) {
  const values = details.value?.values ?? {};
  return (
    <div class="offer" role="group" aria-label={`Column ${props.name}`}>
      <strong title={props.name}>{props.name}</strong>
      {offersFor(props, values).map(({ title, set }) => (
        <button
          key={title}
          disabled={brokenAt.value !== 0}
          onClick={() => void use(props.instance, set, null)}
        >
          {title}
        </button>
      ))}
    </div>
  );
}
