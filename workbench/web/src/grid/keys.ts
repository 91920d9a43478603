// How keys move the active cell of a grid.

/** A cell by its row and column; the row of the titles is the one before the first. */
export interface Cell {
  row: number;
  column: number;
}

export const titles = -1;
const page = 10; // rows

type Move = (cell: Cell, rows: number, columns: number) => Cell;

const moves: Record<string, Move> = {
  ArrowDown: ({ row, column }) => ({ row: row + 1, column }),
  ArrowUp: ({ row, column }) => ({ row: row - 1, column }),
  ArrowRight: ({ row, column }) => ({ row, column: column + 1 }),
  ArrowLeft: ({ row, column }) => ({ row, column: column - 1 }),
  PageDown: ({ row, column }) => ({ row: row + page, column }),
  PageUp: ({ row, column }) => ({ row: row - page, column }),
  Home: ({ row }) => ({ row, column: 0 }),
  End: ({ row }, _, columns) => ({ row, column: columns - 1 }),
};

const within = (value: number, least: number, most: number): number =>
  Math.max(least, Math.min(value, most));

export const inside = ({ row, column }: Cell, rows: number, columns: number): Cell => ({
  row: within(row, titles, rows - 1),
  column: within(column, 0, columns - 1),
});

/** Where a key leads; nothing when it leads nowhere. */
export function moved(key: string, cell: Cell, rows: number, columns: number): Cell | null {
  const move = moves[key];
  return move === undefined ? null : inside(move(cell, rows, columns), rows, columns);
}
