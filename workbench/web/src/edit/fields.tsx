// The parameters that the plugin shows, in the order in which it registers them.

import { Fragment } from "preact";
import { Connection } from "./connection.js";
import { parameters } from "./parameters.js";
import { Field } from "./field.js";
import { details } from "./settings.js";

export function Fields({ instance }: { instance: string }) {
  const shown = new Set(details.value?.shown);
  return (
    <form class="fields" aria-label="Parameters" onSubmit={(event) => event.preventDefault()}>
      {parameters.value
        .filter((parameter) => shown.has(parameter.name))
        .map((parameter) => (
          <Fragment key={parameter.name}>
            <Field instance={instance} parameter={parameter} />
            {parameter.name === "connStr" && <Connection instance={instance} />}
          </Fragment>
        ))}
    </form>
  );
}
