// The fixed parts of the gallery's page.
#ifndef ZUMCC_EXAMPLES_PAGE_H_
#define ZUMCC_EXAMPLES_PAGE_H_

// A neutral dark gray around the pictures leaves the eye's judgement of colour alone.
constexpr char kPageHead[] = R"(<!doctype html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Colour conversions</title>
<style>
  body { margin: 0; background: #2b2b2b; color: #ddd; font: 16px/1.5 system-ui, sans-serif; }
  header, main { max-width: 1500px; margin: auto; padding: 0 2rem; }
  header { padding-top: 2.5rem; }
  h1 { margin: 0; font-weight: 300; font-size: 2.2rem; }
  h2 { margin: 0; font-weight: 400; font-size: 1.4rem; }
  p { margin: .2rem 0 1rem; color: #aaa; max-width: 48rem; }
  a { color: inherit; text-decoration-color: #777; }
  table { border-collapse: collapse; margin: 1rem 0 2rem; }
  th, td { padding: .25rem 1.5rem .25rem 0; text-align: left; vertical-align: top; font-weight: inherit; }
  tr:has(th) > * { border-top: 1px solid #484848; }
  td.number, th.number { text-align: right; font-variant-numeric: tabular-nums; }
  thead { color: #999; }
  section { padding: 2rem 0; border-top: 1px solid #484848; }
  .wall { display: grid; grid-template-columns: repeat(auto-fill, minmax(200px, 1fr)); gap: 1.2rem; }
  figure { margin: 0; }
  figure a { display: block; overflow: hidden; background: #000; aspect-ratio: var(--shape); }
  img { display: block; width: 100%; height: 100%; }
  .zoomed img { transform: scale(6); transform-origin: var(--x) var(--y); image-rendering: pixelated; }
  figcaption { padding-top: .3rem; font-size: .85rem; color: #bbb; }
</style>
)";

constexpr char kTableHead[] = R"(<p>Hold the pointer over a picture to enlarge that place in all pictures of its row;
click to open it alone.</p>
<table><thead><tr><th>Conversion</th><th>Function</th><th class=number>Mpixel/s</th><th class=number>Round trip, PSNR
dB</th></tr></thead>
)";

constexpr char kPageFoot[] = R"(</main>
<script>
  for (const wall of document.querySelectorAll('.wall')) {
    wall.onpointermove = event => {
      const frame = event.target.closest('figure a');
      wall.classList.toggle('zoomed', !!frame);
      if (!frame) return;
      const box = frame.getBoundingClientRect();
      wall.style.setProperty('--x', 100 * (event.clientX - box.left) / box.width + '%');
      wall.style.setProperty('--y', 100 * (event.clientY - box.top) / box.height + '%');
    };
    wall.onpointerleave = () => wall.classList.remove('zoomed');
  }
</script>
</html>
)";

#endif
