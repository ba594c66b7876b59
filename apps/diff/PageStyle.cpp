#include "diff/PageStyle.h"

QString pageStyle()
{
    // A picture may be of any colour, and of none: it stands on a chequered ground.
    return QStringLiteral(R"(
:root {
  color-scheme: light dark;
  --ground: #ffffff; --raised: #f6f7f9; --line: #d5d9df; --ink: #1b1f24; --faint: #59626e;
  --new: #0b6b2e; --new-ground: #dff3e4; --old: #a31621; --old-ground: #fce3e3; --other: #7a5200;
  --check: #e4e7eb;
}
@media (prefers-color-scheme: dark) {
  :root {
    --ground: #14171b; --raised: #1d2126; --line: #363c44; --ink: #e4e7eb; --faint: #9aa4b1;
    --new: #7ee2a0; --new-ground: #12381f; --old: #ffa3a0; --old-ground: #4a1a1c; --other: #e5b95c;
    --check: #2a2f36;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; max-width: 64rem; padding: 1rem; background: var(--ground); color: var(--ink);
  font: 1rem/1.5 system-ui, "PingFang SC", "Microsoft YaHei", "Noto Sans CJK SC", sans-serif;
}
h1 { font-size: 1.5rem; line-height: 1.25; margin: 0 0 .5rem; }
h2 { font-size: 1.2rem; margin: 2.5rem 0 .5rem; padding-bottom: .25rem;
  border-bottom: 1px solid var(--line); }
h3 { font-size: 1rem; margin: 0; }
h2 small, h3 small { font-weight: normal; color: var(--faint); }
p { margin: .5rem 0; }
a { color: inherit; }
nav ul { list-style: none; padding: 0; }
.faint, figcaption, th { color: var(--faint); }
.error { color: var(--old); font-weight: 600; }
article { margin: .75rem 0; padding: .6rem .8rem; background: var(--raised);
  border: 1px solid var(--line); border-left: 4px solid var(--other); border-radius: 6px; }
article.added { border-left-color: var(--new); }
article.removed { border-left-color: var(--old); }
.kind { font-size: .85rem; font-weight: 600; color: var(--other); }
.added .kind { color: var(--new); }
.removed .kind { color: var(--old); }
table { width: 100%; margin-top: .5rem; border-collapse: collapse; table-layout: fixed; }
th, td { padding: .25rem .5rem; border-top: 1px solid var(--line); text-align: left;
  vertical-align: top; overflow-wrap: anywhere; }
th { width: 13rem; font-weight: normal; }
td { white-space: pre-wrap; }
td small { display: block; color: var(--other); white-space: normal; }
.text::before, .text::after { content: "\0022"; color: var(--faint); }
summary { margin-top: .5rem; color: var(--faint); cursor: pointer; }
ins { color: var(--new); background: var(--new-ground); text-decoration: none; border-radius: 3px; }
del { color: var(--old); background: var(--old-ground); border-radius: 3px; }
.pair { display: grid; grid-template-columns: repeat(2, minmax(0, 14rem)); gap: .75rem;
  margin-top: .6rem; }
figure { margin: 0; }
figcaption { font-size: .8rem; overflow-wrap: anywhere; }
img { display: block; max-width: 100%; max-height: 14rem; border: 1px solid var(--line);
  border-radius: 4px; background: repeating-conic-gradient(var(--check) 0 25%, transparent 0 50%)
  0 0 / 16px 16px; }
@media (max-width: 40rem) {
  tr { display: grid; grid-template-columns: 1fr 1fr; border-top: 1px solid var(--line); }
  th { grid-column: 1 / 3; width: auto; padding-bottom: 0; }
  th, td { border: 0; }
  .cells tr { grid-template-columns: 2fr 3fr; }
  .cells th { grid-column: auto; }
}
)");
}
