import type { Shape } from './shape';

/* What a drawing
   is made of. */
export interface Layer<T extends Shape> {
    readonly name: string;
    items: T[];
    visible?: boolean;
}

export const count = (layer: Layer<Shape>): number => {
    // Hidden layers count as 0.
    return layer.visible ? layer.items.length : 0;
};

declare const version: "1.0" | '2.0';
class Box {
    get size(): number { return 1; }
    set size(to: number) {}
}
