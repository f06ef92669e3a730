# What the scripts of this folder share: how a command is run and looked at.
failures=0

# check NAME CODE PATTERN COMMAND...: the exit code, and a pattern that standard output (or with "!"
# in front, standard error) must hold; the other stream must be empty unless the code is 2.
check() {
  local name=$1 code=$2 pattern=$3
  shift 3
  "$@" >stdout 2>stderr </dev/null
  local actual=$? stream=stdout
  [ "${pattern#!}" = "$pattern" ] || stream=stderr
  if [ $actual -ne "$code" ]; then
    echo "$name: exit $actual, not $code"; cat stderr
    failures=$((failures + 1))
  elif ! grep -qE -- "${pattern#!}" $stream; then
    echo "$name: $stream lacks $pattern"; head -5 stdout stderr
    failures=$((failures + 1))
  fi
}

# Ends the script: 1 if a check failed.
finish() {
  [ $failures -eq 0 ] && exit 0
  echo "$failures failed"
  exit 1
}
