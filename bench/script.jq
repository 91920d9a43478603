# jq -j -f script.jq ITEMS.json: the result script of a DataArray load of "items" into T.

# Six significant digits, as printf's %g: the digits are rounded by the value's exact remainder.
def sixDigits:
  fabs as $x
  | ($x | log10 | floor) as $exponent
  | ("1e\(5 - $exponent | fabs)" | tonumber) as $scale
  | (if $exponent <= 5 then $x * $scale else $x / $scale end | floor) as $digits
  | (if $exponent <= 5 then fma($x; $scale; -($digits + 0.5)) else $x - ($digits + 0.5) * $scale end)
    as $remainder
  | ($digits + (if $remainder > 0 or ($remainder == 0 and $digits % 2 == 1) then 1 else 0 end))
  | if . == 1000000 then [100000, $exponent + 1] else [., $exponent] end;

def trimZeros: if contains(".") then sub("\\.?0*$"; "") else . end;

def general:
  (if . < 0 then "-" else "" end) as $sign
  | sixDigits as [$number, $exponent]
  | ($number | tostring) as $digits
  | $sign
    + if $exponent >= 6 or $exponent < -4 then
        ($digits[0:1] + "." + $digits[1:] | trimZeros)
        + (if $exponent < 0 then "e-" else "e+" end)
        + ($exponent | fabs | tostring | if length < 2 then "0" + . else . end)
      elif $exponent < 0 then "0." + "0" * (-1 - $exponent) + $digits | trimZeros
      else $digits[0:$exponent + 1] + "." + $digits[$exponent + 1:] | trimZeros
      end;

# jq's own text of a number is the shortest one; up to six digits that is what is wanted.
def number:
  tostring
  | if length <= 6 or (length == 7 and contains(".")) then . else tonumber | general end;

def value:
  if type == "string" then "\"\"" + . + "\"\""
  elif type == "number" then number
  elif . then "1"
  else "0" end;

def isFlat: all(type != "object" and type != "array");

def elements: (map(if . == null then "" else value + "," end) | add) + ";";

# A named member, or an element of a list, where an object has no name.
def assignment($name; $isElement):
  if type == "object" then
    . as $object
    | (if $isElement then "{" else $name + "={" end)
      + ([keys_unsorted[] as $key | $object[$key] | assignment($key; false)] | add)
      + (if $isElement then "}," else "};" end)
  elif type == "array" then
    $name + "[0-\(length - 1)]="
    + if isFlat then elements else "{" + (map(assignment(""; true)) | add) + "};" end
  elif . == null then ""
  else $name + "=" + value + ";" end;

def record:
  if type == "array" and isFlat then elements else "{" + assignment(""; true) + "};" end;

.items as $items
| (range($items | length) as $row | "T[\($row)]=" + ($items[$row] | record)),
  "; READER_NUM_RECORDS=\($items | length);"
