"""Writes sources with their mutants in them."""

from places import ON


def rewrite(text, numbered):
    """Gives the source `text` in which each of `numbered`, pairs of a number and a place, asks
    whether its mutant was chosen. Places may stand in one another."""
    ordered = sorted(numbered, key=lambda pair: (pair[1].start, -pair[1].end))

    def render(start, end, around):
        parts, at = [], start
        for number, place in ordered:
            if place is around or place.start < at or place.end > end:
                continue
            parts += [text[at:place.start].decode(), render_place(number, place)]
            at = place.end
        parts.append(text[at:end].decode())
        return "".join(parts)

    def render_place(number, place):
        question = f"::iokern_mutants::on({number})"
        return "".join(piece.replace(ON, question) if isinstance(piece, str)
                       else render(*piece, place) for piece in place.pieces)

    return '#include "iokern_mutants.hpp"\n' + render(0, len(text), None)
